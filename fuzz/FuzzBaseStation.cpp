// Plays arbitrary bytes as a stream of BaseStation text that comes in arbitrary pieces, breaks off and begins anew
// while time goes on, and checks that what it tells keeps its order and its bounds.

#include "fuzz/TrafficWatch.h"
#include "traffic/feeds/BaseStationSource.h"
#include "traffic/feeds/BaseStationText.h"

#include <algorithm>
#include <cstdlib>

namespace corvane {
/// Reads what was read and written again: nothing may change.
static void CheckRoundTrip(std::string_view line)
{
    const auto report = DecodeBaseStationLine(line);
    if (!report || report->Ended)
        return;
    const auto again = DecodeBaseStationLine(EncodeBaseStationLine(*report, "2026/11/23,08:59:16.493"));
    if (!again || again->Address != report->Address || again->Callsign != report->Callsign ||
        again->Squawk != report->Squawk || again->AltitudeFt != report->AltitudeFt ||
        again->Position.has_value() != report->Position.has_value())
        std::abort();
}
} // namespace corvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace corvane;
    ByteSpan input(data, size);
    BaseStationSource source;
    TrafficWatch watch;
    std::int64_t now = 0;
    while (input.size() >= 2) {
        const std::size_t length = std::min<std::size_t>(input[0], input.size() - 2);
        now += input[1] < 200 ? input[1] : std::int64_t{input[1] - 199} * 1000;
        if (input[1] == 199)
            source.Restart(now);
        const ByteSpan piece = input.subspan(2, length);
        CheckRoundTrip({reinterpret_cast<const char*>(piece.data()), piece.size()});
        source.Receive(piece, now);
        source.Advance(now);
        watch.Take(source.TakeEvents());
        input = input.subspan(2 + length);
    }
    source.Advance(now + 1000000);
    watch.Take(source.TakeEvents());
    if (watch.Count() != 0 || source.Table().Count() != 0)
        std::abort();
    return 0;
}
