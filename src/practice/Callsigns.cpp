#include "practice/Callsigns.h"

#include "core/NumberText.h"

#include <array>
#include <string_view>

namespace corvane {
// Words that nobody flies under and that no instruction begins with.
static constexpr std::array<std::string_view, 6> AirlineNames{"Lantern", "Orchard", "Thistle",
                                                              "Pebble",  "Bramble", "Marigold"};
static constexpr std::string_view RegistrationLetters = "ABCDEFGHJKLMNPQRSTUVWXYZ";

std::string InventCallsign(AircraftKind kind, PracticeRandom& random)
{
    if (kind == AircraftKind::Airliner) {
        std::string callsign(AirlineNames[random.Below(AirlineNames.size())]);
        AppendNumber(callsign, static_cast<std::int32_t>(100 + random.Below(900)));
        return callsign;
    }
    std::string callsign = "N";
    AppendNumber(callsign, static_cast<std::int32_t>(100 + random.Below(900)));
    callsign += RegistrationLetters[random.Below(RegistrationLetters.size())];
    callsign += RegistrationLetters[random.Below(RegistrationLetters.size())];
    return callsign;
}

std::string InventObserverName(PracticeRandom& random)
{
    std::string name = "Watcher";
    AppendNumber(name, static_cast<std::int32_t>(10 + random.Below(90)));
    return name;
}
} // namespace corvane
