#include "cli/TrafficOptions.h"

#include "traffic/feeds/FeedPlace.h"

namespace corvane {
/// Refuses a text that a parser does not take, with the parser's own words.
template <class Parse> static CLI::Validator ReadBy(Parse parse, const char* form)
{
    return {[parse](std::string& text) {
                const auto read = parse(text);
                return read ? std::string() : read.error().Why;
            },
            form};
}

CLI::Option* AddFeedOption(CLI::App& command, TrafficOptions& options)
{
    return command
        .add_option("--feed", options.Feed, "Real aircraft: sbs:HOST[:30003], json:FILE or json:http://HOST[:80]/PATH")
        ->check(ReadBy(ParseFeedPlace, "PLACE"))
        ->type_name("");
}

CLI::Validator Place()
{
    return {[](std::string& text) {
                const auto place = ParseNumbers(text, ',', 2);
                const bool valid = place && OnEarth(place->front(), place->back());
                return valid ? std::string() : std::string("must have the form LAT,LON, in degrees");
            },
            "LAT,LON"};
}

void AddTrafficPlaceOptions(CLI::App& command, TrafficOptions& options)
{
    constexpr double HalfTheEarthNm = 10800;
    constexpr std::size_t MostOfAll = 65536;
    auto* const center = command.add_option_group("center", "Where the traffic is wanted: one of these");
    center
        ->add_option("--airport", options.Area.Airport,
                     "An airport of the list, such as \"KSEA - Seattle Tacoma Intl\"")
        ->type_name("TEXT");
    center->add_option("--sector", options.Area.Sector, "An ARTCC/FIR sector, such as \"PANAMA FIR\"")
        ->type_name("NAME");
    center->add_option("--around", options.Around, "A place")->check(Place())->type_name("");
    center->require_option(0, 1);
    command.add_option("--radius", options.RadiusNm, "Traffic farther away, in nautical miles, is left out")
        ->check(CLI::Range(1.0, HalfTheEarthNm))
        ->capture_default_str();
    command.add_option("--most", options.Most, "Of more aircraft only the nearest are taken")
        ->check(CLI::Range(std::size_t{1}, MostOfAll))
        ->capture_default_str();
}

void RequireTrafficPlace(const TrafficOptions& options, bool traffic)
{
    const bool given = !options.Around.empty() || !options.Area.Airport.empty() || !options.Area.Sector.empty();
    if (traffic && !given)
        throw CLI::RequiredError("--airport, --sector or --around"); // the parser's own way of refusing arguments
    if (given && !traffic)
        throw CLI::RequiredError("--feed");
}

void AddFeedOutOption(CLI::App& command, std::string& place)
{
    command.add_option("--feed-out", place, "Offers the targets as BaseStation text at sbs:PORT or sbs:ADDRESS:PORT")
        ->check(ReadBy(ParseFeedOutPlace, "PLACE"))
        ->type_name("");
}

Result<NearestTrafficOptions> NearestOf(const TrafficOptions& options, const FolderOptions& folders,
                                        std::ostream& notices)
{
    NearestTrafficOptions nearest{.Center = {}, .RadiusNm = options.RadiusNm, .Most = options.Most};
    if (const auto place = ParseNumbers(options.Around, ',', 2)) {
        nearest.Center = {place->front(), place->back()};
        return nearest;
    }
    AreaOptions wanted = options.Area;
    wanted.Folders = folders;
    const auto area = LoadArea(wanted, notices);
    if (!area)
        return area.error();
    nearest.Center = {area->AreaCenterLat, area->AreaCenterLon};
    if (nearest.Center == LatLon{})
        return Fail("traffic", "without its area nobody knows which traffic is wanted");
    return nearest;
}

Result<std::unique_ptr<FeedOut>> OpenFeedOut(const std::string& place, const MagVarGrid& magVar,
                                             const TrafficDetailsTable* details)
{
    if (place.empty())
        return std::unique_ptr<FeedOut>();
    const auto parsed = ParseFeedOutPlace(place);
    if (!parsed)
        return parsed.error();
    return FeedOut::Open(*parsed, magVar, details);
}
} // namespace corvane
