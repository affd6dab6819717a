#pragma once

#include "core/MagVarGrid.h"
#include "core/MessageBoxes.h"
#include "net/memory/InMemoryNetwork.h"
#include "session/MessageCodec.h"
#include "session/MessagePump.h"
#include "session/PlayerTable.h"
#include "session/SessionState.h"

#include <cstddef>
#include <ctime>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::bench {
/// Seconds of this thread's processor time that work takes, so that whatever else the machine does counts little.
double ProcessorSecondsOf(const auto& work)
{
    const auto now = [] {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
    };
    const double start = now();
    work();
    return now() - start;
}

/// A controller in a session with members, all of which it knows.
class SessionScene {
public:
    static constexpr std::size_t MemberCount = 250;

    SessionScene() : m_host(Connected(m_provider)) {}

    /// Lets the controller join, over a peer that the factory makes; it leads to this scene's network.
    void Join(SessionPeerFactory& factory)
    {
        SessionEntry description;
        description.Name = "Bench";
        static_cast<void>(m_host->Open(description, OpenCreate));
        m_session.SessionPeer = Connected(factory);
        const auto sessions = m_session.SessionPeer->GetDPEnumSessions(0, EnumSessionsPasswordRequired);
        static_cast<void>(m_session.SessionPeer->Open(sessions->front(), OpenJoin));
        m_session.SessionGuid = sessions->front().InstanceGuid;
        m_session.OwnPlayerId = *m_session.SessionPeer->CreatePlayer("**ATC Controller", "Player");
        m_session.SessionJoined = true;
        for (std::size_t i = 0; i < MemberCount; ++i) {
            const std::string name = "Member with a long name " + std::to_string(i);
            m_members.push_back(*m_host->CreatePlayer(name, "Player"));
            m_players.Append(name, m_members.back(), PilotRole);
        }
    }

    /// Messages to the controller, from one member after the other.
    void Send(std::size_t message, const Bytes& content)
    {
        static_cast<void>(
            m_host->Send(m_members[message % MemberCount], m_session.OwnPlayerId, SendGuaranteed, content));
    }

    void Pump() { m_pump.PumpTick(); }

    [[nodiscard]] SessionPeerFactory& Provider() noexcept { return m_provider; }

private:
    class NoEvents final : public PumpEvents {
    public:
        void RefreshPlayerList() override {}
        void AddChatLine(std::string_view /*from*/, std::string_view /*text*/) override {}
        void Disconnect() override {}
    };

    class NoBoxes final : public MessageBoxes {
    public:
        void Show(MessageIcon /*icon*/, std::string_view /*title*/, std::string_view /*text*/) override {}
        bool Confirm(std::string_view /*title*/, std::string_view /*text*/) override { return true; }
        std::optional<std::string> AskText(std::string_view /*title*/, std::string_view /*prompt*/) override
        {
            return {};
        }
    };

    static std::unique_ptr<SessionPeer> Connected(SessionPeerFactory& factory)
    {
        auto peer = factory.DirectPlayCreate();
        static_cast<void>((*peer)->InitializeConnection(InMemoryProvider::ConnectionAddress));
        return *std::move(peer);
    }

    InMemoryNetwork m_network;
    InMemoryProvider m_provider{m_network};
    std::unique_ptr<SessionPeer> m_host;
    std::vector<PlayerId> m_members;
    SessionState m_session;
    PlayerTable m_players;
    MagVarGrid m_magVar;
    NoEvents m_events;
    NoBoxes m_boxes;
    MessagePump m_pump{m_session, m_players, m_magVar, m_events, m_boxes};
};
} // namespace corvane::bench
