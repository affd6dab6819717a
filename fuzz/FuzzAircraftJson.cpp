// Reads arbitrary bytes as one aircraft.json after another, and checks that what they tell keeps its order and bounds.

#include "fuzz/TrafficWatch.h"
#include "traffic/feeds/AircraftJsonSource.h"

#include <algorithm>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace corvane;
    constexpr std::uint8_t EndOfFile = 0;
    ByteSpan input(data, size);
    AircraftJsonSource source;
    TrafficWatch watch;
    std::int64_t now = 0;
    while (!input.empty()) {
        const auto end = std::ranges::find(input, EndOfFile);
        const auto length = static_cast<std::size_t>(end - input.begin());
        source.Receive(input.first(length), now);
        source.Advance(now);
        watch.Take(source.TakeEvents());
        input = input.subspan(std::min(length + 1, input.size()));
        now += 700;
    }
    source.Advance(now + 1000000);
    watch.Take(source.TakeEvents());
    if (watch.Count() != 0)
        std::abort();
    return 0;
}
