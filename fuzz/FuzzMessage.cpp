// Decodes arbitrary bytes as a message, and drives the message pump through a session whose members send arbitrary
// messages, rename themselves and leave between the ticks.

#include "core/MagVarGrid.h"
#include "core/MessageBoxes.h"
#include "net/memory/InMemoryNetwork.h"
#include "session/MessageCodec.h"
#include "session/MessagePump.h"
#include "session/PlayerTable.h"
#include "session/SessionState.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <string>

namespace corvane {
namespace {
class NoBoxes final : public MessageBoxes {
public:
    void Show(MessageIcon /*icon*/, std::string_view /*title*/, std::string_view /*text*/) override {}
    bool Confirm(std::string_view /*title*/, std::string_view /*text*/) override { return true; }
    std::optional<std::string> AskText(std::string_view /*title*/, std::string_view /*prompt*/) override { return {}; }
};

class FuzzedSession final : public PumpEvents {
public:
    FuzzedSession()
    {
        for (auto& member : m_members)
            member = Join();
        m_session.SessionPeer = Join();
        m_session.SessionGuid = m_network.Listing(EnumSessionsAvailable).front().InstanceGuid;
        m_session.SessionMaxPlayers = 2;
        m_session.OwnPlayerId = *m_session.SessionPeer->CreatePlayer("**ATC", "Player");
        m_session.SessionJoined = true;
        m_players.Append("**ATC", m_session.OwnPlayerId, PilotRole);
    }

    void RefreshPlayerList() override {}
    void AddChatLine(std::string_view /*from*/, std::string_view /*text*/) override {}
    void Disconnect() override
    {
        InMemoryProvider factory(m_network);
        static_cast<void>(LeaveSession(factory, m_session, m_players));
    }

    /// One step: the first byte says which member does what, the rest is what it says.
    void Step(ByteSpan bytes)
    {
        const std::size_t member = bytes.front() % m_members.size();
        auto& peer = m_members[member];
        const auto player = static_cast<PlayerId>(member + 1); // ids count from 1 in the order of joining
        switch (bytes.front() / m_members.size() % 8) {
        case 0: m_pump.PumpTick(); break;
        case 1: m_pump.UpkeepTick(); break;
        case 2: static_cast<void>(peer->SetPlayerName(player, std::string(bytes.begin(), bytes.end()))); break;
        case 3: static_cast<void>(peer->Close()); break;
        default: static_cast<void>(peer->Send(player, m_session.OwnPlayerId, SendGuaranteed, bytes.subspan(1))); break;
        }
    }

private:
    std::unique_ptr<SessionPeer> Join()
    {
        auto peer = *InMemoryProvider(m_network).DirectPlayCreate();
        static_cast<void>(peer->InitializeConnection(InMemoryProvider::ConnectionAddress));
        const auto sessions = m_network.Listing(EnumSessionsAvailable);
        SessionEntry entry = sessions.empty() ? SessionEntry() : sessions.front();
        entry.Flags = SessionKeepAlive + SessionMigrateHost;
        static_cast<void>(peer->Open(entry, sessions.empty() ? OpenCreate : OpenJoin));
        if (!m_session.SessionPeer && m_joined++ < m_members.size())
            static_cast<void>(peer->CreatePlayer("Member", "Player"));
        return peer;
    }

    InMemoryNetwork m_network;
    std::array<std::unique_ptr<SessionPeer>, 3> m_members;
    std::size_t m_joined = 0;
    SessionState m_session;
    PlayerTable m_players;
    MagVarGrid m_magVar;
    NoBoxes m_boxes;
    MessagePump m_pump{m_session, m_players, m_magVar, *this, m_boxes};
};
} // namespace
} // namespace corvane

// The input is a row of steps, each behind a byte that tells its length.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    corvane::ByteSpan input(data, size);
    if (const auto message = corvane::DecodeMessage(input))
        static_cast<void>(corvane::DecodeMessage(corvane::EncodeMessage(*message)));
    const auto session = std::make_unique<corvane::FuzzedSession>();
    while (input.size() > 1) {
        const std::size_t length = std::min<std::size_t>(std::size_t{input[0]} + 1, input.size() - 1);
        session->Step(input.subspan(1, length));
        input = input.subspan(1 + length);
    }
    return 0;
}
