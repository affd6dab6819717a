#include "core/Text.h"
#include "traffic/flightgear/FlightGearSource.h"

#include <cstdlib>
#include <unordered_map>
#include <utility>

using namespace corvane;

/// Whether what is told keeps its promises: an aircraft appears once, before anything else is told of it.
static void CheckEvents(const TrafficEvents& events, std::unordered_map<TrafficKey, bool>& present)
{
    for (const TrafficEvent& event : events) {
        if (const auto* appeared = std::get_if<AircraftAppeared>(&event)) {
            if (appeared->Name.empty() || appeared->Name.size() > TrafficNameLimit ||
                std::exchange(present[appeared->Key], true))
                std::abort();
        } else if (const auto* moved = std::get_if<AircraftMoved>(&event)) {
            const TrafficReport& report = moved->Report;
            const bool sound = report.Position.Lat >= -90 && report.Position.Lat <= 90 && report.Position.Lon >= -180 &&
                               report.Position.Lon <= 180 && report.TrueHeading >= 0 && report.TrueHeading <= 360 &&
                               report.GroundSpeedKt >= 0 && report.GroundSpeedKt <= 4000;
            if (!sound || !present[moved->Key])
                std::abort();
        } else if (const auto* said = std::get_if<AircraftSaid>(&event)) {
            if (said->Text.empty() || said->Text.size() > TrafficLineLimit || !present[said->Key])
                std::abort();
        } else if (const auto* vanished = std::get_if<AircraftVanished>(&event)) {
            if (!std::exchange(present[vanished->Key], false))
                std::abort();
        }
    }
}

/// Steps of an action, a length and that many bytes: datagrams, time that passes, lines and members to be told of.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t HeadSize = 3;
    FlightGearSource source({.Callsign = "KSEA_TW", .Position = {47.45, -122.31}, .Partner = "relay"});
    std::unordered_map<TrafficKey, bool> present;
    std::int64_t nowMs = 0;
    for (ByteSpan input(data, size); input.size() >= HeadSize;) {
        const std::uint8_t action = input[0] % 5;
        const std::size_t wanted = input[1] | static_cast<std::size_t>(input[2]) << 8;
        const ByteSpan bytes = input.subspan(HeadSize).first(std::min(wanted, input.size() - HeadSize));
        const std::string text(bytes.begin(), bytes.end());
        input = input.subspan(HeadSize + bytes.size());
        switch (action) {
        case 0:
        case 1: { // whole packets but for what a fuzzer does not find by itself: the size
            Bytes datagram(bytes.begin(), bytes.end());
            for (std::size_t i = 0; action == 1 && datagram.size() >= 16 && i < 4; ++i)
                datagram[12 + i] = static_cast<std::uint8_t>(datagram.size() >> (8 * (3 - i)));
            source.Receive(datagram, nowMs);
            break;
        }
        case 2: source.Advance(nowMs += static_cast<std::int64_t>(wanted)); break;
        case 3: source.Tell(LineSaid{text}); break;
        default: source.Tell(MemberMoved{text, {.Position = {47, -122}, .Squawk = {}, .FrequencyKhz = {}}}); break;
        }
        CheckEvents(source.TakeEvents(), present);
        for (const Bytes& datagram : source.TakeOutput())
            if (datagram.size() > flightgear::LargestPacket || !flightgear::DecodePosition(datagram))
                std::abort();
    }
    return 0;
}
