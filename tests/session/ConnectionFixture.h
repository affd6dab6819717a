#pragma once

#include "session/ConnectionModel.h"
#include "session/PlayerTable.h"
#include "tests/session/SessionFixture.h"

#include <gmock/gmock.h>

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
class WindowScript final : public ConnectionView {
public:
    void SetConnections(std::span<const ConnectionEntry> connections) override
    {
        Connections.assign(connections.begin(), connections.end());
    }
    void SetSessions(std::span<const std::string> lines) override { Sessions.assign(lines.begin(), lines.end()); }
    void SetStatus(std::string_view status) override { Statuses.emplace_back(status); }
    void SetListsEnabled(bool enabled) override { ListsEnabled = enabled; }
    void SetTimers(bool running) override { Timers = running; }
    void OpenRadar() override { ++RadarsOpened; }
    void EndProgram() override { ++Ends; }

    std::vector<ConnectionEntry> Connections;
    std::vector<std::string> Sessions;
    std::vector<std::string> Statuses;
    bool ListsEnabled = true;
    bool Timers = false;
    int RadarsOpened = 0;
    int Ends = 0;
};

class ConnectionTest : public testing::Test {
protected:
    ConnectionTest() { HostMember.Host("Traffic"); }

    /// Locates the one session.
    void Locate()
    {
        Subject.Load();
        Subject.ConnectionTypeChosen(0);
        Subject.LocateSession();
    }
    void Join() { Subject.JoinSession(0, "ATC Controller"); }

    void ExpectIdle() const
    {
        EXPECT_EQ(Subject.State(), ConnectionState::Idle);
        EXPECT_TRUE(View.ListsEnabled);
        EXPECT_FALSE(View.Timers);
        EXPECT_THAT(View.Sessions, testing::IsEmpty());
        EXPECT_EQ(View.Statuses.back(), "Disconnected");
        EXPECT_EQ(Session.OwnPlayerId, 0);
        EXPECT_FALSE(Session.SessionJoined);
    }

    InMemoryNetwork Network;
    std::string FailingOperation;
    int FailingCall = 1;
    std::function<bool(std::string_view)> OnOperation; ///< whether it fails
    InMemoryProvider Provider{Network};
    FailingFactory Factory{Provider, [this](std::string_view operation, int call) {
                               return (operation == FailingOperation && call == FailingCall) ||
                                      (OnOperation && OnOperation(operation));
                           }};
    Member HostMember{Network};
    SessionState Session;
    PlayerTable Players;
    WindowScript View;
    ScriptedBoxes Boxes;
    ConnectionModel Subject{Factory, Session, Players, View, Boxes};
};
} // namespace corvane
