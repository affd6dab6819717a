#pragma once

#include "session/ConnectionModel.h"

#include <QTimer>
#include <QWidget>

#include <map>
#include <memory>

namespace Ui {
class Form2;
}

namespace corvane {
class DeskSettings;

/// The connection window: locate sessions, pick one, join it under a nickname.
class ConnectionWindow final : public QWidget, private ConnectionView {
    Q_OBJECT

public:
    ConnectionWindow(SessionPeerFactory& factory, SessionState& session, PlayerTable& players, MessageBoxes& boxes,
                     DeskSettings& desk);
    ~ConnectionWindow() override;

    /// Presses the buttons that a person would press: picks the connection type of this name, locates sessions, and
    /// joins the first. Returns whether the type and a session are there, and no other is being joined.
    bool JoinFirstSession(const QString& connectionName);

    /// Presses "Locate Session".
    void Locate();

    /// Offers hosting on the network for the connection type of this name, under a caption such as "Host this practice
    /// session on the network".
    void OfferHosting(const QString& connectionName, const QString& caption);
    /// Shows at which address that type's session is hosted; an empty one: it is not.
    void ShowHosting(const QString& connectionName, const QString& address);
    /// Where the session of the selected type is hosted; empty where it is not.
    [[nodiscard]] QString HostedAt() const;

    /// Offers a choice of what happens in that type's session: nothing planned, or one of these.
    /// chosen  index of the present one, or -1
    void OfferScenarios(const QString& connectionName, const QStringList& names, int chosen);

signals:
    /// The host has accepted. The window stays until the radar window has opened.
    void Joined();
    void ExitRequested();
    /// The user wants a type's session hosted at an address of this machine, or, where it is empty, not on the network.
    void HostingWanted(const QString& connectionName, const QString& address);
    /// The user picked one of the offered scenarios, or none: -1.
    void ScenarioWanted(int index);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void SetConnections(std::span<const ConnectionEntry> connections) override;
    void SetSessions(std::span<const std::string> lines) override;
    void SetStatus(std::string_view status) override;
    void SetListsEnabled(bool enabled) override;
    void SetTimers(bool running) override;
    void OpenRadar() override;
    void EndProgram() override;

    void TypeChosen();
    void HostingClicked(bool on);
    void EnableHosting();
    void HostElsewhere();
    void ScenarioPicked(int row);
    void Remember();
    void Recall();
    void JoinClicked();

    [[nodiscard]] QString SelectedType() const;

    std::unique_ptr<Ui::Form2> m_ui;
    DeskSettings& m_desk;
    ConnectionModel m_connection;
    QTimer m_timer1{this};
    QTimer m_timer2{this};
    struct Hosting {
        QString Caption;
        QString At; ///< empty while the session is not hosted
    };
    QString m_scenariosOf;                 ///< the connection type that has scenarios; empty before any are offered
    std::map<QString, Hosting> m_hostings; ///< by the connection types that can be hosted on the network
};
} // namespace corvane
