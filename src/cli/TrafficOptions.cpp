#include "cli/TrafficOptions.h"

#include "traffic/feeds/AircraftFeed.h"
#include "traffic/feeds/FeedPlace.h"
#include "traffic/flightgear/AreaStation.h"
#include "traffic/flightgear/FlightGearFeed.h"
#include "traffic/out/FeedOut.h"

#include <utility>

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
                const bool valid = place && OnEarth({place->front(), place->back()});
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

static Result<FeedPlace> ParseFlightGearHost(std::string_view text)
{
    return ParseHostAndPort(text, FlightGearPort);
}

CLI::Option* AddFlightGearOption(CLI::App& command, TrafficOptions& options)
{
    return command
        .add_option("--flightgear", options.FlightGear,
                    "FlightGear's multiplayer traffic, of a relay or another program: HOST[:5000]")
        ->check(ReadBy(ParseFlightGearHost, "HOST"))
        ->type_name("");
}

CLI::Option* AddFromOption(CLI::App& command, TrafficOptions& options)
{
    constexpr std::string_view FlightGearPrefix = "flightgear:";
    const auto parse = [FlightGearPrefix](std::string_view text) {
        return text.starts_with(FlightGearPrefix) ? ParseFlightGearHost(text.substr(FlightGearPrefix.size()))
                                                  : ParseFeedPlace(text);
    };
    return command
        .add_option_function<std::string>(
            "--from",
            [&options, FlightGearPrefix](const std::string& text) {
                const bool isFlightGear = text.starts_with(FlightGearPrefix);
                (isFlightGear ? options.FlightGear : options.Feed) =
                    isFlightGear ? text.substr(FlightGearPrefix.size()) : text;
            },
            "Whose aircraft appear instead of simulated pilots: flightgear:HOST[:5000], sbs:HOST[:30003], json:FILE or "
            "json:http://HOST[:80]/PATH")
        ->check(ReadBy(parse, "SOURCE"))
        ->type_name("");
}

void AddStationOptions(CLI::App& command, TrafficOptions& options)
{
    constexpr int LargestPort = 65535;
    const auto callsign = [](std::string& text) {
        return IsStationCallsign(text) ? std::string()
                                       : std::string("must be 1 to 7 letters, digits, - and _, and not begin with obs");
    };
    command.add_option("--callsign", options.Callsign, "Own callsign on FlightGear")
        ->check(CLI::Validator(callsign, "NAME"))
        ->type_name("");
    command.add_option("--listen", options.ListenPort, "Own UDP port for FlightGear; else any that is free")
        ->check(CLI::Range(1, LargestPort));
}

void CheckTrafficOptions(const TrafficOptions& options)
{
    if (options.IsWanted() && !options.HasPlace())
        throw CLI::RequiredError("--airport, --sector or --around"); // the parser's own way of refusing arguments
    if (!options.FlightGear.empty() && options.Callsign.empty())
        throw CLI::RequiredError("--callsign");
    if (options.FlightGear.empty() && (!options.Callsign.empty() || options.ListenPort != 0))
        throw CLI::ValidationError("--callsign and --listen", "are for FlightGear alone");
    if (options.Feed.starts_with("json:") && !options.Feed.starts_with("json:http://") && !options.BindAddress.empty())
        throw CLI::ValidationError("--bind", "has no meaning for a file");
    if (!options.IsWanted() && (!options.Area.Airport.empty() || !options.Area.Sector.empty()))
        throw CLI::ValidationError("--airport and --sector", "are for other traffic alone");
}

void AddFeedOutOption(CLI::App& command, std::string& place)
{
    command.add_option("--feed-out", place, "Offers the targets as BaseStation text at sbs:PORT or sbs:ADDRESS:PORT")
        ->check(ReadBy(ParseFeedOutPlace, "PLACE"))
        ->type_name("");
}

static Result<AreaModel> LoadPlace(const TrafficOptions& options, const FolderOptions& folders, std::ostream& notices)
{
    if (const auto place = ParseNumbers(options.Around, ',', 2)) {
        AreaModel area;
        area.AreaCenter = {place->front(), place->back()};
        return area;
    }
    AreaOptions wanted = options.Area;
    wanted.Folders = folders;
    auto area = LoadArea(wanted, notices);
    if (area && area->AreaCenter.Lat == 0 && area->AreaCenter.Lon == 0)
        return Fail("traffic", "without its area nobody knows which traffic is wanted");
    return area;
}

/// A relay passes on what is in range, and another program what it likes: only the number is limited here.
static Result<OpenedTraffic> OpenFlightGear(const TrafficOptions& options, const AreaModel& area)
{
    constexpr double WholeEarthNm = 10800;
    const auto host = ParseFlightGearHost(options.FlightGear);
    if (!host)
        return host.error();
    FlightGearLink link;
    link.PartnerHost = host->Host;
    link.PartnerPort = host->Port;
    link.BindAddress = options.BindAddress;
    link.ListenPort = options.ListenPort;
    link.Station = StationAt(area, options.Callsign);
    auto feed = FlightGearFeed::Start(std::move(link));
    if (!feed)
        return feed.error();
    OpenedTraffic opened{.Feed = {}, .Address = (*feed)->LocalAddress(), .Port = (*feed)->LocalPort()};
    opened.Feed = std::make_unique<NearestTraffic>(
        *std::move(feed),
        NearestTrafficOptions{.Center = area.AreaCenter, .RadiusNm = WholeEarthNm, .Most = options.Most});
    return opened;
}

Result<OpenedTraffic> OpenTraffic(const TrafficOptions& options, const FolderOptions& folders, std::ostream& notices)
{
    const auto area = LoadPlace(options, folders, notices);
    if (!area)
        return area.error();
    if (!options.FlightGear.empty())
        return OpenFlightGear(options, *area);
    auto place = ParseFeedPlace(options.Feed);
    if (!place)
        return place.error();
    place->LocalAddress = options.BindAddress;
    const NearestTrafficOptions nearest{.Center = area->AreaCenter, .RadiusNm = options.RadiusNm, .Most = options.Most};
    return OpenedTraffic{.Feed = OpenAircraftFeed(*place, nearest),
                         .Address = place->Kind == FeedKind::JsonFile ? place->Path : place->Host,
                         .Port = place->Port};
}
} // namespace corvane
