// A pump tick over the positions of 250 members that a busy session has waiting, one each: as it is, with a recorder
// that follows the session, and while it records.

#include "core/MagVarGrid.h"
#include "core/MessageBoxes.h"
#include "platform/InMemoryNetwork.h"
#include "session/MessageCodec.h"
#include "session/MessagePump.h"
#include "session/PlayerTable.h"
#include "session/SessionState.h"
#include "session/recording/RecordingPeer.h"

#include <benchmark/benchmark.h>

#include <ctime>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {
namespace {
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

enum class Recorder { None, Following, Recording };

/// A controller in a session with the members, all of which it knows.
class Scene {
public:
    explicit Scene(Recorder kind) : m_file(std::filesystem::temp_directory_path() / "corvane-bench.cvr")
    {
        m_host = Connected(m_provider);
        SessionEntry description;
        description.Name = "Bench";
        static_cast<void>(m_host->Open(description, OpenCreate));
        m_session.SessionPeer = kind == Recorder::None ? Connected(m_provider) : Connected(m_factory);
        const auto sessions = m_session.SessionPeer->GetDPEnumSessions({}, 0, EnumSessionsPasswordRequired);
        static_cast<void>(m_session.SessionPeer->Open(sessions->front(), OpenJoin));
        m_session.SessionGuid = sessions->front().InstanceGuid;
        m_session.OwnPlayerId = *m_session.SessionPeer->CreatePlayer("**ATC Controller", "Player", 0, 0);
        m_session.SessionJoined = true;
        for (std::size_t i = 0; i < MemberCount; ++i) {
            const std::string name = "Member with a long name " + std::to_string(i);
            m_members.push_back(*m_host->CreatePlayer(name, "Player", 0, 0));
            m_players.Append(name, m_members.back(), PilotRole);
        }
        m_pump.PumpTick(); // the transport's own news
        if (kind == Recorder::Recording)
            static_cast<void>(m_recorder.Start(m_file));
    }
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;
    ~Scene()
    {
        m_recorder.Stop();
        std::error_code ignored;
        std::filesystem::remove(m_file, ignored);
    }

    void SendPositions()
    {
        const PositionMessage position{.Type = MessageType::PositionFull,
                                       .Latitude = 47,
                                       .Longitude = -122,
                                       .AltitudeFt = 5000,
                                       .TrueHeading = 90,
                                       .GroundSpeedKt = 210};
        for (const PlayerId member : m_members)
            static_cast<void>(m_host->Send(member, m_session.OwnPlayerId, SendGuaranteed, EncodeMessage(position)));
        m_nowMs += 100;
    }

    void Pump() { m_pump.PumpTick(); }

private:
    static std::unique_ptr<SessionPeer> Connected(SessionPeerFactory& factory)
    {
        auto peer = factory.DirectPlayCreate("");
        static_cast<void>((*peer)->InitializeConnection(InMemoryProvider::ConnectionAddress));
        return *std::move(peer);
    }

    std::filesystem::path m_file;
    std::int64_t m_nowMs = 0;
    InMemoryNetwork m_network;
    InMemoryProvider m_provider{m_network};
    SessionRecorder m_recorder{[this] { return m_nowMs; }};
    RecordingPeerFactory m_factory{m_provider, m_recorder};
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

void PumpTick(benchmark::State& state, Recorder kind)
{
    const auto scene = std::make_unique<Scene>(kind);
    for (auto iteration : state) {
        scene->SendPositions();
        const double start = ProcessorSeconds();
        scene->Pump();
        state.SetIterationTime(ProcessorSeconds() - start);
    }
}
BENCHMARK_CAPTURE(PumpTick, alone, Recorder::None)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(PumpTick, followed, Recorder::Following)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(PumpTick, recorded, Recorder::Recording)->UseManualTime()->Unit(benchmark::kMicrosecond);
} // namespace
} // namespace corvane
