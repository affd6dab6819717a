#pragma once

#include "core/MessageBoxes.h"
#include "session/ChatLog.h"

#include <QTimer>
#include <QWidget>

#include <memory>

namespace Ui {
class Form6;
}

namespace corvane {
/// The chat with everybody in the session; floats above the radar while it is shown.
class ChatWindow final : public QWidget {
    Q_OBJECT

public:
    static constexpr int StayOnTopIntervalMs = 3000;

    ChatWindow(const SessionState& session, const PlayerTable& players, MessageBoxes& boxes);
    ~ChatWindow() override;

    void AddChatLine(std::string_view from, std::string_view text);
    void RefreshPlayerList();
    void ShowAgain();
    /// Shows the window, and the name of whom a line is to be for in front of what has been typed.
    void WriteTo(const QString& name);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void Send();
    void HideBehind();
    void ShowHistory();

    std::unique_ptr<Ui::Form6> m_ui;
    const SessionState& m_session;
    const PlayerTable& m_players;
    MessageBoxes& m_boxes;
    ChatLog m_log;
    QTimer m_timer1{this};
};
} // namespace corvane
