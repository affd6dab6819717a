#include "traffic/feeds/AircraftJson.h"
#include "traffic/feeds/BaseStationText.h"
#include "traffic/feeds/FeedPlace.h"
#include "traffic/feeds/LineCutter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane {
namespace {
using testing::ElementsAre;
using testing::HasSubstr;

/// A report in one line: only what it tells.
std::string Text(const std::optional<FeedReport>& report)
{
    if (!report)
        return "nothing";
    std::ostringstream out;
    out << FeedAddressText(report->Address) << (report->Ended ? " ended" : "");
    const auto tell = [&out](const char* name, const auto& value) {
        if (value)
            out << ' ' << name << *value;
    };
    if (!report->Callsign.empty())
        out << " \"" << report->Callsign << '"';
    if (report->Position)
        out << " at " << report->Position->Lat << '/' << report->Position->Lon;
    tell("ft", report->AltitudeFt);
    tell("kt", report->GroundSpeedKt);
    tell("trk", report->TrackDeg);
    tell("sq", report->Squawk);
    tell("em", report->Emergency);
    tell("gnd", report->OnGround);
    if (!report->Category.empty() || !report->TypeName.empty())
        out << ' ' << report->Category << ' ' << report->TypeName;
    return out.str();
}

struct LineCase {
    const char* Name;
    const char* Line;
    const char* Told;
};
class BaseStationLine : public testing::TestWithParam<LineCase> {};

TEST_P(BaseStationLine, TellsWhatItHolds)
{
    EXPECT_EQ(Text(DecodeBaseStationLine(GetParam().Line)), GetParam().Told);
}

INSTANTIATE_TEST_SUITE_P(
    BaseStation, BaseStationLine,
    testing::Values(
        LineCase{"Altitude", "MSG,3,1,1,40621D,1,2026/11/23,08:26:09.977,2026/11/23,08:26:10.614,,38000,,,,,,,,,,0\r\n",
                 "40621D ft38000 gnd0"},
        LineCase{"Position", "MSG,3,1,1,40621D,1,,,,,,38000,,,52.25720,3.91937,,,,,,0",
                 "40621D at 52.2572/3.91937 ft38000 gnd0"},
        LineCase{"OnTheGround", "MSG,2,1,1,484175,1,,,,,,,17,98,52.32061,4.73473,,,,,,-1\n",
                 "484175 at 52.3206/4.73473 kt17 trk98 gnd1"},
        LineCase{"PaddedCallsign", "MSG,1,1,1,886330,1,,,,,G9006   ,,,,,,,,,,,0", "886330 \"G9006\" gnd0"},
        LineCase{"SquawkWithZeros", "MSG,6,1,1,886330,1,,,,,,,,,,,,0120,0,0,0,", "886330 sq120 em0"},
        LineCase{"AllInOneLine", "MSG,3,0,0,abcdef,0,,,,,BAW1,1000,250.5,359.9,-1.5,-179.99999999999,-64,7700,1,1,1,0",
                 "ABCDEF \"BAW1\" at -1.5/-180 ft1000 kt250.5 trk359.9 sq7700 em1 gnd0"},
        LineCase{"Computed", "MLAT,3,1,1,40621D,1,,,,,,38000", "40621D ft38000"},
        LineCase{"NotIcao", "MSG,3,1,1,~40621D,1,,,,,,38000", "~40621D ft38000"},
        LineCase{"MoreFields", "MSG,8,1,1,40621D,1,,,,,,,,,,,,,,,,1,5,6,7", "40621D gnd1"},
        LineCase{"FewFields", "MSG,8,1,1,40621D", "40621D"},
        LineCase{"OneCoordinate", "MSG,3,1,1,40621D,1,,,,,,,,,52.25720,,,,,,,", "40621D"},
        LineCase{"BeyondEverything", "MSG,3,1,1,40621D,1,,,,,,130001,4001,360.1,90.1,10,,0888,,,,", "40621D"},
        LineCase{"AtTheBounds", "MSG,3,1,1,40621D,1,,,,,,-2000,4000,360,-90,180,,7777,,,,",
                 "40621D at -90/180 ft-2000 kt4000 trk360 sq7777"},
        LineCase{"NoNumbers", "MSG,3,1,1,40621D,1,,,,,,1e3,inf,nan,0x10,1e999,,12,,,2,yes", "40621D"},
        LineCase{"NonsenseBehind", "MSG,3,1,1,40621D,1,,,,,,100ft,5 kt,9-,1.5N,2,,77777,,,,", "40621D"},
        LineCase{"BlanksAround", "MSG,3,1,1,40621D,1,,,,, ,  100 ,,,,,,,,,,", "40621D ft100"},
        LineCase{"LongCallsign", "MSG,1,1,1,40621D,1,,,,,NINECHARS,,,,,,,,,,,", "40621D"},
        LineCase{"CallsignWithControls", "MSG,1,1,1,40621D,1,,,,,AB\tC,,,,,,,,,,,", "40621D"},
        LineCase{"CallsignBeyondAscii",
                 "MSG,1,1,1,40621D,1,,,,,\xC3\x84"
                 "B,,,,,,,,,,,",
                 "40621D"},
        LineCase{"NoAddress", "MSG,3,1,1,,1,,,,,,38000", "nothing"},
        LineCase{"AddressOfZeros", "MSG,3,1,1,000000,1,,,,,,38000", "nothing"},
        LineCase{"AddressOfFive", "MSG,3,1,1,4062D,1,,,,,,38000", "nothing"},
        LineCase{"AddressOfSeven", "MSG,3,1,1,40621D0,1,,,,,,38000", "nothing"},
        LineCase{"AddressWithSign", "MSG,3,1,1,-0621D,1,,,,,,38000", "nothing"},
        LineCase{"Removed", "STA,,5,179,400AE7,10103,2008/11/28,14:58:51.153,2008/11/28,14:58:51.153,RM",
                 "400AE7 ended"},
        LineCase{"Deleted", "STA,,5,179,400AE7,10103,,,,,AD", "400AE7 ended"},
        LineCase{"SignalLost", "STA,,5,179,400AE7,10103,,,,,SL", "nothing"},
        LineCase{"NewAircraft", "AIR,,333,11,400AE7,27223,,,,", "nothing"},
        LineCase{"Unknown", "XYZ,3,1,1,40621D,1,,,,,,38000", "nothing"}, LineCase{"Empty", "\r\n", "nothing"}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(BaseStationText, ReadsItsOwnLines)
{
    const FeedReport whole{.Address = 0x4CEB3F,
                           .Callsign = "KLM12",
                           .Position = LatLon{-33.12346, 151.00001},
                           .AltitudeFt = -75,
                           .GroundSpeedKt = 250,
                           .TrackDeg = 360,
                           .Squawk = 21,
                           .Emergency = true,
                           .OnGround = false};
    const std::string line = EncodeBaseStationLine(whole, "2026/11/23,08:59:16.493");
    EXPECT_EQ(line, "MSG,3,1,1,4CEB3F,1,2026/11/23,08:59:16.493,2026/11/23,08:59:16.493,KLM12,-75,250,0,-33.12346,"
                    "151.00001,,0021,,-1,,0\r\n");
    EXPECT_EQ(Text(DecodeBaseStationLine(line)), "4CEB3F \"KLM12\" at -33.1235/151 ft-75 kt250 trk0 sq21 em1 gnd0");
    EXPECT_EQ(Text(DecodeBaseStationLine(EncodeBaseStationLine({.Address = 1}, ""))), "000001");
}

std::vector<std::string> Cut(std::string_view stream, std::size_t piece)
{
    LineCutter cutter;
    std::vector<std::string> lines;
    for (; !stream.empty(); stream.remove_prefix(std::min(piece, stream.size())))
        cutter.Feed(stream.substr(0, piece), [&lines](std::string_view line) { lines.emplace_back(line); });
    return lines;
}

TEST(LineCutter, CutsTheSameWhateverThePieces)
{
    const std::string longest(LineCutter::LongestLine, 'x');
    const std::string stream =
        "one\r\n\ntwo\n" + longest + '\n' + longest + "y\n" + longest + longest + "\nlast\nbegun";
    for (const std::size_t piece : {1U, 2U, 7U, 999U, 1000U, 1001U, 100000U})
        EXPECT_THAT(Cut(stream, piece), ElementsAre("one\r", "", "two", longest, longest, longest, "last")) << piece;
}

struct JsonCase {
    const char* Name;
    std::string Text;
    const char* Told; ///< the aircraft, or the Error
};
class AircraftJsonText : public testing::TestWithParam<JsonCase> {};

TEST_P(AircraftJsonText, TellsWhatItHolds)
{
    const auto file = DecodeAircraftJson(GetParam().Text, "a.json");
    std::string told;
    if (!file)
        told = file.error().Text();
    for (std::size_t i = 0; file && i < file->Aircraft.size(); ++i) {
        std::ostringstream ages;
        ages << " seen " << file->Aircraft[i].SeenS << ' ' << file->Aircraft[i].SeenPositionS;
        told += (i == 0 ? "" : "; ") + Text(file->Aircraft[i].Report) + ages.str();
    }
    EXPECT_THAT(told, HasSubstr(GetParam().Told));
    if (*GetParam().Told == '\0') {
        EXPECT_EQ(told, "");
    }
}

std::string Entries(const std::string& entries)
{
    return R"({"now":5.5,"messages":9,"aircraft":[)" + entries + "]}";
}

INSTANTIATE_TEST_SUITE_P(
    AircraftJson, AircraftJsonText,
    testing::Values(
        JsonCase{"Nobody", Entries(""), ""},
        JsonCase{"Today", Entries(R"({"hex":"4ceb3f","flight":"KLM1    ","alt_baro":100,"alt_geom":400,"gs":51.5,
            "track":90,"squawk":"7600","category":"A3","t":"B738","emergency":"nordo","lat":1.5,"lon":-2,"seen":0.5,
            "seen_pos":2})"),
                 "4CEB3F \"KLM1\" at 1.5/-2 ft100 kt51.5 trk90 sq7600 em1 gnd0 A3 B738 seen 0.5 2"},
        JsonCase{"Older", Entries(R"({"hex":"~4ceb3f","altitude":100,"speed":50,"lat":1,"lon":2,"seen":3})"),
                 "~4CEB3F at 1/2 ft100 kt50 gnd0 seen 3 3"},
        JsonCase{"Ground", Entries(R"({"hex":"4ceb3f","altitude":"ground","alt_geom":300})"), "4CEB3F gnd1 seen 0 0"},
        JsonCase{"GeometricAltitudeAlone", Entries(R"({"hex":"4ceb3f","alt_geom":300})"), "4CEB3F ft300 seen 0 0"},
        JsonCase{"HeadingOnTheGround", Entries(R"({"hex":"4ceb3f","true_heading":77.5})"), "4CEB3F trk77.5 seen 0 0"},
        JsonCase{"WrongKinds", Entries(R"({"hex":"4ceb3f","flight":7,"altitude":null,"speed":"50","lat":true,
            "lon":[1],"squawk":1200,"track":{"track":5},"seen":"x"})"),
                 "4CEB3F seen 0 0"},
        JsonCase{"LastPositionIsNone", Entries(R"({"hex":"4ceb3f","lastPosition":{"lat":1,"lon":2,"seen_pos":70}})"),
                 "4CEB3F seen 0 0"},
        JsonCase{"OutOfRange",
                 Entries(R"({"hex":"4ceb3f","lat":-90.5,"lon":0,"altitude":-3000,"speed":-1,"track":361})"),
                 "4CEB3F seen 0 0"},
        JsonCase{"HugeNumber",
                 Entries(R"({"hex":"4ceb3f","flight":"1e999","lat":1e999,"lon":2,"speed":-1e999,"x":"a\"1e999",
            "altitude":7})"),
                 "4CEB3F \"1e999\" ft7 gnd0 seen 0 0"},
        JsonCase{"AddressMissing",
                 Entries(R"({"flight":"KLM1"},{"hex":"xyz"},{"hex":"4ceb3f"},7,[],[{"hex":"000002"}])"),
                 "4CEB3F seen 0 0"},
        JsonCase{"NegativeAge", Entries(R"({"hex":"4ceb3f","seen":-5})"), "4CEB3F seen 0 0"},
        JsonCase{"OtherLists", R"({"x":[{"hex":"000001"}],"aircraft":[{"hex":"000002"}],"y":[{"hex":"000003"}]})",
                 "000002 seen 0 0"},
        JsonCase{"Half", R"({"now":5,"aircraft":[{"hex":"4ceb3f"},{"he)", "a.json: is no JSON at byte"},
        JsonCase{"Empty", "", "a.json: is no JSON"},
        JsonCase{"NoList", R"({"now":5})", "a.json: has no list of aircraft"},
        JsonCase{"ListOfAnother", R"([{"aircraft":[{"hex":"4ceb3f"}]}])", "a.json: has no list of aircraft"},
        JsonCase{"DeepEnough", Entries(R"({"hex":"4ceb3f","a":[[[[[1]]]]]})"), "4CEB3F seen"},
        JsonCase{"TooDeep", Entries(R"({"hex":"4ceb3f","a":[[[[[[1]]]]]]})"), "a.json: nests deeper than 8 levels"},
        JsonCase{"EndlesslyDeep", std::string(1000000, '['), "a.json: nests deeper than 8 levels"},
        JsonCase{"TooLarge", std::string(AircraftJson::LargestFile + 1, ' '), "a.json: has more than 33554432 bytes"}),
    [](const auto& row) { return std::string(row.param.Name); });

struct PlaceCase {
    const char* Name;
    const char* Text;
    const char* Read; ///< the place as it is shown, or the Error
    bool Typed = false;
};
class FeedPlaces : public testing::TestWithParam<PlaceCase> {};

TEST_P(FeedPlaces, IsRead)
{
    const auto place = GetParam().Typed ? ParseTypedFeedPlace(GetParam().Text) : ParseFeedPlace(GetParam().Text);
    EXPECT_THAT(place ? FeedPlaceText(*place) : place.error().Why, HasSubstr(GetParam().Read));
}

INSTANTIATE_TEST_SUITE_P(
    FeedPlace, FeedPlaces,
    testing::Values(
        PlaceCase{"Sbs", "sbs:radar.example:4000", "radar.example:4000"},
        PlaceCase{"UsualPort", "sbs:10.0.0.7", "10.0.0.7:30003"}, PlaceCase{"Brackets", "sbs:[::1]:99", "[::1]:99"},
        PlaceCase{"BareBrackets", "sbs:[::1]", "[::1]:30003"},
        PlaceCase{"NoBrackets", "sbs:fe80::1:99", "needs brackets"}, PlaceCase{"OpenBracket", "sbs:[::1", "is no name"},
        PlaceCase{"Behind", "sbs:[::1]x", "is no name"}, PlaceCase{"PortZero", "sbs:a:0", "has no port"},
        PlaceCase{"PortTooLarge", "sbs:a:65536", "has no port"},
        PlaceCase{"PortWithNonsense", "sbs:a:30003x", "has no port"}, PlaceCase{"NoHost", "sbs::3", "is no name"},
        PlaceCase{"Blank", "sbs:a b", "is no name"}, PlaceCase{"File", "json:/run/a b.json", "/run/a b.json"},
        PlaceCase{"Web", "json:http://pi.local/data/aircraft.json", "http://pi.local:80/data/aircraft.json"},
        PlaceCase{"WebWithoutPath", "json:HTTP://pi:8080", "http://pi:8080/"},
        PlaceCase{"WebWithLineEnd", "json:http://pi/a\r\nX:", "blanks"},
        PlaceCase{"Secure", "json:https://pi/a", "only http"}, PlaceCase{"NoFile", "json:", "names no file"},
        PlaceCase{"OtherKind", "adsb:x", "must have the form"},
        PlaceCase{"TypedHost", " pi.local ", "pi.local:30003", true},
        PlaceCase{"TypedPage", "http://pi/a.json", "http://pi:80/a.json", true},
        PlaceCase{"TypedFile", "aircraft.JSON", "aircraft.JSON", true},
        PlaceCase{"TypedWhole", "sbs:pi:9", "pi:9", true}, PlaceCase{"TypedNothing", "", "is no name", true}),
    [](const auto& row) { return std::string(row.param.Name); });
} // namespace
} // namespace corvane
