// A pump tick over 10,000 waiting positions from 250 members, beside decoding the same messages alone. The tick may
// cost three times the decoding.

#include "core/MagVarGrid.h"
#include "core/MessageBoxes.h"
#include "platform/InMemoryNetwork.h"
#include "session/MessageCodec.h"
#include "session/MessagePump.h"
#include "session/PlayerTable.h"
#include "session/SessionState.h"

#include <benchmark/benchmark.h>

#include <ctime>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {
namespace {
constexpr std::size_t MessageCount = 10000;
constexpr std::size_t MemberCount = 250;

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
    std::optional<std::string> AskText(std::string_view /*title*/, std::string_view /*prompt*/) override { return {}; }
};

Bytes PositionOf(std::size_t message)
{
    const auto step = static_cast<double>(message) / MessageCount;
    return EncodeMessage(PositionMessage{.Type = MessageType::PositionFull,
                                         .Latitude = 47 + step,
                                         .Longitude = -122 + step,
                                         .AltitudeFt = 5000,
                                         .TrueHeading = static_cast<std::int16_t>(message % 360),
                                         .GroundSpeedKt = 210});
}

/// A controller in a session with the members, all of which it knows.
class Scene {
public:
    Scene() : m_host(Peer())
    {
        SessionEntry description;
        description.Name = "Bench";
        static_cast<void>(m_host->Open(description, OpenCreate));
        m_session.SessionPeer = Peer();
        const auto sessions = m_session.SessionPeer->GetDPEnumSessions({}, 0, EnumSessionsPasswordRequired);
        static_cast<void>(m_session.SessionPeer->Open(sessions->front(), OpenJoin));
        m_session.OwnPlayerId = *m_session.SessionPeer->CreatePlayer("**ATC Controller", "Player", 0, 0);
        m_session.SessionJoined = true;
        for (std::size_t i = 0; i < MemberCount; ++i) {
            const std::string name = "Member with a long name " + std::to_string(i);
            m_members.push_back(*m_host->CreatePlayer(name, "Player", 0, 0));
            m_players.Append(name, m_members.back(), PilotRole);
        }
    }

    void SendPositions()
    {
        for (std::size_t i = 0; i < MessageCount; ++i)
            static_cast<void>(
                m_host->Send(m_members[i % MemberCount], m_session.OwnPlayerId, SendGuaranteed, PositionOf(i)));
    }

    void Pump() { m_pump.PumpTick(); }

private:
    std::unique_ptr<SessionPeer> Peer()
    {
        auto peer = InMemoryProvider(m_network).CreatePeer();
        static_cast<void>((*peer)->InitializeConnection(InMemoryProvider::ConnectionAddress));
        return std::move(*peer);
    }

    InMemoryNetwork m_network;
    std::unique_ptr<SessionPeer> m_host;
    std::vector<PlayerId> m_members;
    SessionState m_session;
    PlayerTable m_players;
    MagVarGrid m_magVar;
    NoEvents m_events;
    NoBoxes m_boxes;
    MessagePump m_pump{m_session, m_players, m_magVar, m_events, m_boxes};
};

/// Seconds of this thread's processor time, so that whatever else the machine does counts little.
double ProcessorSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

double SecondsOf(const auto& work)
{
    const double start = ProcessorSeconds();
    work();
    return ProcessorSeconds() - start;
}

void DecodePositions(benchmark::State& state)
{
    for (auto iteration : state) {
        std::vector<Bytes> messages; // fresh ones, as they are when they have just arrived
        for (std::size_t i = 0; i < MessageCount; ++i)
            messages.push_back(PositionOf(i));
        state.SetIterationTime(SecondsOf([&] {
            for (const Bytes& message : messages)
                benchmark::DoNotOptimize(DecodeMessage(message));
        }));
    }
}
BENCHMARK(DecodePositions)->UseManualTime()->Unit(benchmark::kMicrosecond);

void PumpPositions(benchmark::State& state)
{
    const auto scene = std::make_unique<Scene>();
    for (auto iteration : state) {
        scene->SendPositions();
        state.SetIterationTime(SecondsOf([&] { scene->Pump(); }));
    }
}
BENCHMARK(PumpPositions)->UseManualTime()->Unit(benchmark::kMicrosecond);
} // namespace
} // namespace corvane
