#pragma once

#include "session/MessagePump.h"
#include "tests/session/SessionFixture.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// A controller in a session that somebody else hosts, already admitted.
class PumpTest : public testing::Test, public PumpEvents {
public:
    void RefreshPlayerList() override { ++Refreshes; }
    void AddChatLine(std::string_view from, std::string_view text) override
    {
        Chat.push_back(std::string(from) + "|" + std::string(text));
    }
    void Disconnect() override
    {
        ++Disconnects;
        EXPECT_TRUE(LeaveSession(Factory, Session, Players));
    }
    void PlayerAdded(const PlayerRecord& player) override { Changes.push_back("+" + player.Name); }
    void PlayerUpdated(const PlayerRecord& player) override { Changes.push_back("~" + player.Name); }
    void PlayerRemoved(const PlayerRecord& player) override { Changes.push_back("-" + player.Name); }

protected:
    PumpTest()
    {
        HostMember.Host("Traffic");
        EXPECT_TRUE(CreateSessionObjects(Factory, Session));
        EXPECT_TRUE(Session.SessionPeer->InitializeConnection(InMemoryProvider::ConnectionAddress));
        SessionEntry entry;
        entry.InstanceGuid = HostMember.Guid;
        EXPECT_TRUE(Session.SessionPeer->Open(entry, OpenJoin));
        Session.OwnPlayerId = *Session.SessionPeer->CreatePlayer("**ATC", "Player");
        Session.SessionGuid = HostMember.Guid;
        Session.SessionMaxPlayers = 8;
        Session.SessionJoined = true;
        Players.Append("**ATC", Session.OwnPlayerId, PilotRole);
    }

    std::unique_ptr<Member> Joined(std::string_view name)
    {
        auto member = std::make_unique<Member>(Network);
        member->Join(HostMember.Guid, name);
        return member;
    }
    /// Announces itself, or speaks of someone else in the same words.
    void Announce(const Member& member, MessageType type = MessageType::PilotAnnounce)
    {
        member.Send(Session.OwnPlayerId, AnnounceMessage{type, member.Id});
    }
    void Say(const Member& member, const Message& message) const { member.Send(Session.OwnPlayerId, message); }

    std::vector<std::string> Names() const
    {
        std::vector<std::string> names;
        for (const PlayerRecord& player : Players.Players())
            names.push_back(player.Name);
        return names;
    }

    InMemoryNetwork Network;
    std::string FailingOperation;
    InMemoryProvider Provider{Network};
    FailingFactory Factory{Provider, [this](std::string_view operation, int) { return operation == FailingOperation; }};
    Member HostMember{Network};
    SessionState Session;
    PlayerTable Players;
    MagVarGrid MagVar;
    ScriptedBoxes Boxes;
    MessagePump Pump{Session, Players, MagVar, *this, Boxes};
    int Refreshes = 0;
    int Disconnects = 0;
    std::vector<std::string> Chat;
    std::vector<std::string> Changes;
};

inline constexpr PositionMessage Position{MessageType::PositionFull, 45, -90, 3281, 180, 194};
} // namespace corvane
