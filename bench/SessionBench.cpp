// A pump tick over 10,000 waiting positions from 250 members, beside decoding the same messages alone. The tick may
// cost three times the decoding.

#include "bench/SessionScene.h"

#include <benchmark/benchmark.h>

namespace corvane::bench {
namespace {
constexpr std::size_t MessageCount = 10000;

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

void DecodePositions(benchmark::State& state)
{
    for (auto iteration : state) {
        std::vector<Bytes> messages; // fresh ones, as they are when they have just arrived
        for (std::size_t i = 0; i < MessageCount; ++i)
            messages.push_back(PositionOf(i));
        state.SetIterationTime(ProcessorSecondsOf([&] {
            for (const Bytes& message : messages)
                benchmark::DoNotOptimize(DecodeMessage(message));
        }));
    }
}
BENCHMARK(DecodePositions)->UseManualTime()->Unit(benchmark::kMicrosecond);

void PumpPositions(benchmark::State& state)
{
    const auto scene = std::make_unique<SessionScene>();
    scene->Join(scene->Provider());
    for (auto iteration : state) {
        for (std::size_t i = 0; i < MessageCount; ++i)
            scene->Send(i, PositionOf(i));
        state.SetIterationTime(ProcessorSecondsOf([&] { scene->Pump(); }));
    }
}
BENCHMARK(PumpPositions)->UseManualTime()->Unit(benchmark::kMicrosecond);
} // namespace
} // namespace corvane::bench
