#pragma once

#include "core/MessageBoxes.h"
#include "session/ChatDraft.h"
#include "session/ChatModel.h"

#include <QTimer>
#include <QWidget>

#include <memory>

class QKeyEvent;

namespace Ui {
class Form6;
}

namespace corvane {
class DeskSettings;

/// The chat with everybody in the session. It belongs to the radar, above which it stays while it is shown.
class ChatWindow final : public QWidget {
    Q_OBJECT

public:
    static constexpr int StayOnTopIntervalMs = 3000;

    ChatWindow(const SessionState& session, const PlayerTable& players, MessageBoxes& boxes, DeskSettings& desk);
    ~ChatWindow() override;

    void AddChatLine(std::string_view from, std::string_view text);
    void RefreshPlayerList();
    void ShowAgain();
    /// Shows the window, and the name of whom a line is to be for in front of what has been typed.
    void WriteTo(const QString& name);

signals:
    /// A line, the own ones among them, stands in the window. The texts are Windows-1252, and valid during the call.
    void LineAdded(std::string_view from, std::string_view text);
    /// So many lines have come that nobody can have read: the window is hidden or another one has the keyboard.
    void UnreadChanged(int lines);

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void FillOptions();
    void Send();
    void HideBehind();
    void StayAbove();
    void ShowLine(std::string_view from, std::string_view text);
    [[nodiscard]] bool SpeaksToOwnPlayer(std::string_view from, std::string_view text) const;
    void SetUnread(int lines);
    void ClearFirstText();
    bool HandleKey(const QKeyEvent& key);
    bool Complete();
    void InsertReadyText(const QString& text);
    void SetTyped(const std::string& text);

    std::unique_ptr<Ui::Form6> m_ui;
    const SessionState& m_session;
    const PlayerTable& m_players;
    MessageBoxes& m_boxes;
    DeskSettings& m_desk;
    ChatModel m_log;
    ChatDraft m_draft;
    QTimer m_timer1{this};
    int m_unread = 0;
    bool m_showTimes = false;
    bool m_firstText = true; ///< nothing has been typed yet
};
} // namespace corvane
