// A pump tick over the positions of 250 members that a busy session has waiting, one each: as it is, with a recorder
// that follows the session, and while it records.

#include "bench/SessionScene.h"
#include "recording/RecordingPeer.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <filesystem>

namespace corvane::bench {
namespace {
enum class Recorder { None, Following, Recording };

/// A session, with a recorder between the controller and the network.
class RecordedScene {
public:
    explicit RecordedScene(Recorder kind) : m_file(std::filesystem::temp_directory_path() / "corvane-bench.cvr")
    {
        m_scene.Join(kind == Recorder::None ? m_scene.Provider() : m_factory);
        m_scene.Pump(); // the transport's own news
        if (kind == Recorder::Recording)
            static_cast<void>(m_recorder.Start(m_file));
    }
    RecordedScene(const RecordedScene&) = delete;
    RecordedScene& operator=(const RecordedScene&) = delete;
    ~RecordedScene()
    {
        m_recorder.Stop();
        std::error_code ignored;
        std::filesystem::remove(m_file, ignored);
    }

    void SendPositions()
    {
        const Bytes position = EncodeMessage(PositionMessage{.Type = MessageType::PositionFull,
                                                             .Latitude = 47,
                                                             .Longitude = -122,
                                                             .AltitudeFt = 5000,
                                                             .TrueHeading = 90,
                                                             .GroundSpeedKt = 210});
        for (std::size_t i = 0; i < SessionScene::MemberCount; ++i)
            m_scene.Send(i, position);
        m_nowMs += 100;
    }

    void Pump() { m_scene.Pump(); }

private:
    std::filesystem::path m_file;
    std::int64_t m_nowMs = 0;
    SessionRecorder m_recorder{[this] { return m_nowMs; }};
    SessionScene m_scene; // its peers end before their recorder
    RecordingPeerFactory m_factory{m_scene.Provider(), m_recorder};
};

void PumpTick(benchmark::State& state, Recorder kind)
{
    const auto scene = std::make_unique<RecordedScene>(kind);
    for (auto iteration : state) {
        scene->SendPositions();
        state.SetIterationTime(ProcessorSecondsOf([&] { scene->Pump(); }));
    }
}
BENCHMARK_CAPTURE(PumpTick, alone, Recorder::None)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(PumpTick, followed, Recorder::Following)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(PumpTick, recorded, Recorder::Recording)->UseManualTime()->Unit(benchmark::kMicrosecond);
} // namespace
} // namespace corvane::bench
