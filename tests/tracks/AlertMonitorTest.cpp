#include "tracks/TrafficMonitor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace corvane {
namespace {
AlertOptions BothAlerts()
{
    AlertOptions options;
    options.ConflictAlert = true;
    options.LowAltitudeAlert = true;
    return options;
}

AlertTarget TargetOf(std::int32_t id, double eastNm, double course = 90, std::int16_t kt = 360)
{
    AlertTarget target;
    target.PlayerId = id;
    target.Track.Id = static_cast<TrackId>(id + 100);
    target.Track.Last.Position = {0, eastNm / 60};
    target.Track.Last.AltitudeFt = 5000;
    target.Track.Last.GroundSpeedKt = kt;
    target.Track.Course = course;
    return target;
}

/// "begin 3-5 predicted", "end 4 low".
std::string TextOf(const AlertEvent& event)
{
    std::string text = event.Begins ? "begin " : "end ";
    text += std::to_string(event.What.FirstId);
    if (event.What.Kind == AlertKind::LowAltitude)
        return text + " low";
    return text + "-" + std::to_string(event.What.SecondId) + (event.What.Violated ? " violated" : " predicted");
}

/// The events of one refresh after another: each letter of script places the second of two targets, which fly the same
/// way: '.' apart, 'p' about to meet, 'v' too close, 'x' gone.
std::vector<std::string> EventsOf(const std::string& script)
{
    AlertMonitor monitor;
    std::vector<std::string> events;
    for (std::size_t i = 0; i < script.size(); ++i) {
        std::vector<AlertTarget> targets{TargetOf(5, 0)};
        if (script[i] != 'x')
            targets.push_back(TargetOf(3, script[i] == 'v' ? 1 : 10, script[i] == 'p' ? 270 : 90));
        const auto now = static_cast<double>(i);
        for (const AlertEvent& event : monitor.Refresh(targets, AirportIndex(), BothAlerts(), now)) {
            EXPECT_EQ(event.Time, now);
            events.push_back(std::to_string(i) + " " + TextOf(event));
        }
    }
    return events;
}

struct ScriptCase {
    const char* Name;
    const char* Script;
    std::vector<std::string> Events;
};
class Confirmation : public testing::TestWithParam<ScriptCase> {};
TEST_P(Confirmation, TakesTwoOfThreeToBeginAndThreeToEnd)
{
    EXPECT_EQ(EventsOf(GetParam().Script), GetParam().Events);
}
INSTANTIATE_TEST_SUITE_P(
    Alerts, Confirmation,
    testing::Values(
        ScriptCase{"Once", "p......", {}}, ScriptCase{"TwiceInFour", "p..p..", {}},
        ScriptCase{"TwoOfThree", "p.p", {"2 begin 3-5 predicted"}},
        ScriptCase{"TwoInARow", "pp..", {"1 begin 3-5 predicted"}},
        ScriptCase{"EndsAfterThree", "pp...p", {"1 begin 3-5 predicted", "4 end 3-5 predicted"}},
        ScriptCase{"HoldsThroughTwo", "pp..p..p...", {"1 begin 3-5 predicted", "10 end 3-5 predicted"}},
        ScriptCase{"AtOnceAViolation", "vv", {"1 begin 3-5 violated"}},
        ScriptCase{"ComesTrue", "ppv", {"1 begin 3-5 predicted", "2 end 3-5 predicted", "2 begin 3-5 violated"}},
        ScriptCase{"ComesTrueUnconfirmed", "pv", {"1 begin 3-5 violated"}},
        ScriptCase{"ViolationLastsAsPrediction", "vvppv...", {"1 begin 3-5 violated", "7 end 3-5 violated"}},
        ScriptCase{"EndsWithItsMember", "vvxv", {"1 begin 3-5 violated", "2 end 3-5 violated"}}),
    [](const auto& row) { return std::string(row.param.Name); });

AreaModel AreaOf(std::vector<AirportRecord> airports)
{
    AreaModel area;
    area.AreaAirports = std::move(airports);
    return area;
}

AirportRecord AirportAt(double lat, double lon, std::int32_t elevationFt, const char* icao = "KAAA")
{
    AirportRecord airport;
    airport.Icao = icao;
    airport.Lat = lat;
    airport.Lon = lon;
    airport.ElevationFt = elevationFt;
    return airport;
}

struct SilenceCase {
    const char* Name;
    std::function<void(AlertTarget&, AlertTarget&)> Change; ///< of two at one mile, the second 1 nm east of the first
    std::vector<AirportRecord> Airports;
    bool Alert;
};
class ConflictSilence : public testing::TestWithParam<SilenceCase> {};
TEST_P(ConflictSilence, IsKeptWhereTheRulesSay)
{
    AlertTarget one = TargetOf(1, 0);
    AlertTarget other = TargetOf(2, 1);
    GetParam().Change(one, other);
    AlertMonitor monitor;
    const AirportIndex airports(AreaOf(GetParam().Airports));
    for (int second = 0; second < 2; ++second)
        monitor.Refresh(std::vector{one, other}, airports, BothAlerts(), second);
    EXPECT_EQ(!monitor.Standing().empty(), GetParam().Alert);
}
void AsTheyAre(AlertTarget& /*one*/, AlertTarget& /*other*/) {}
const double FarSide = 3 / 60.0; // 3 nm east of the first
INSTANTIATE_TEST_SUITE_P(
    Alerts, ConflictSilence,
    testing::Values(
        SilenceCase{"NoAirport", AsTheyAre, {}, true},
        SilenceCase{"ThirtyNineKnots", [](auto& one, auto&) { one.Track.Last.GroundSpeedKt = 39; }, {}, false},
        SilenceCase{"FortyKnots", [](auto& one, auto&) { one.Track.Last.GroundSpeedKt = 40; }, {}, true},
        SilenceCase{"Stale", [](auto&, auto& other) { other.Track.Stale = true; }, {}, false},
        SilenceCase{"LowAtAnAirport", AsTheyAre, {AirportAt(0, 0, 4001)}, false},
        SilenceCase{"AThousandFeetAbove", AsTheyAre, {AirportAt(0, 0, 4000)}, true},
        SilenceCase{"OnlyOneIsLow",
                    [](auto&, auto& other) { other.Track.Last.AltitudeFt = 5001; },
                    {AirportAt(0, 0, 4001)},
                    true},
        SilenceCase{"BothWithinThreeMiles", AsTheyAre, {AirportAt(0, FarSide - 1e-9, 5000)}, false},
        SilenceCase{"OneJustOutside", AsTheyAre, {AirportAt(0, FarSide + 0.001, 5000)}, true},
        SilenceCase{
            "EachAtAnAirportOfItsOwn", AsTheyAre, {AirportAt(0, -2.5 / 60, 5000), AirportAt(0, 3.5 / 60, 5000)}, true},
        SilenceCase{"AirportWithoutPlace", AsTheyAre, {AirportAt(std::nan(""), 0, 5000)}, true}),
    [](const auto& row) { return std::string(row.param.Name); });

struct LowCase {
    const char* Name;
    std::function<void(AlertTarget&)>
        Change; ///< of an IFR target at 5,000 ft whose minimum is 5,101 ft, bound for KAAA
    double AirportEastNm;
    bool Alert;
};
class LowAltitude : public testing::TestWithParam<LowCase> {};
TEST_P(LowAltitude, IsToldOfIfrFlightsBelowTheirMinimum)
{
    AlertTarget target = TargetOf(4, 0);
    target.Ifr = true;
    target.MinimumAltitudeFt = 5101;
    target.DestinationIcao = " kaaa ";
    GetParam().Change(target);
    const AirportIndex airports(AreaOf({AirportAt(0, GetParam().AirportEastNm / 60, 0)}));
    AlertMonitor monitor;
    monitor.Refresh(std::vector{target}, airports, BothAlerts(), 0);
    const auto events = monitor.Refresh(std::vector{target}, airports, BothAlerts(), 1);
    std::vector<std::string> texts;
    for (const AlertEvent& event : events)
        texts.push_back(TextOf(event));
    EXPECT_EQ(texts, GetParam().Alert ? std::vector<std::string>{"begin 4 low"} : std::vector<std::string>());
}
INSTANTIATE_TEST_SUITE_P(
    Alerts, LowAltitude,
    testing::Values(LowCase{"MoreThanAHundredFeetBelow", [](auto&) {}, 20, true},
                    LowCase{"AHundredFeetBelow", [](auto& low) { low.MinimumAltitudeFt = 5100; }, 20, false},
                    LowCase{"Vfr", [](auto& low) { low.Ifr = false; }, 20, false},
                    LowCase{"WithoutMinimum",
                            [](auto& low) {
                                low.MinimumAltitudeFt = 0;
                                low.Track.Last.AltitudeFt = -500;
                            },
                            20, false},
                    LowCase{"NearItsDestination", [](auto&) {}, 4.99, false},
                    LowCase{"JustNotNearIt", [](auto&) {}, 5.01, true},
                    LowCase{"NearAnotherAirport", [](auto& low) { low.DestinationIcao = "KBBB"; }, 1, true},
                    LowCase{"Taxiing", [](auto& low) { low.Track.Last.GroundSpeedKt = 39; }, 20, false},
                    LowCase{"Stale", [](auto& low) { low.Track.Stale = true; }, 20, false},
                    LowCase{"LowestMinimum",
                            [](auto& low) { low.MinimumAltitudeFt = std::numeric_limits<std::int32_t>::min(); }, 20,
                            false}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(AlertMonitor, AcknowledgementLastsUntilTheAlertBeginsAnew)
{
    AlertMonitor monitor;
    const auto refresh = [&](double eastNm, double course) {
        monitor.Refresh(std::vector{TargetOf(5, 0), TargetOf(3, eastNm, course)}, AirportIndex(), BothAlerts(), 0);
    };
    refresh(10, 270);
    refresh(10, 270);
    ASSERT_EQ(monitor.Standing().size(), 1U);
    monitor.Acknowledge(0);
    refresh(9, 270);
    EXPECT_TRUE(monitor.Standing().front().Acknowledged);
    refresh(2, 270);
    ASSERT_EQ(monitor.Standing().size(), 1U);
    EXPECT_FALSE(monitor.Standing().front().Acknowledged) << "a violation is news";
    monitor.AcknowledgeAll();
    EXPECT_TRUE(monitor.Standing().front().Acknowledged);
}

TEST(AlertMonitor, ListsTheMostUrgentFirstAndNothingThatIsSwitchedOff)
{
    AlertTarget low = TargetOf(9, 500);
    low.Ifr = true;
    low.MinimumAltitudeFt = 8000;
    const std::vector targets{TargetOf(1, 0),
                              TargetOf(2, 20, 270),
                              TargetOf(3, 100),
                              TargetOf(4, 110, 270),
                              TargetOf(5, 200),
                              TargetOf(6, 201),
                              low};
    AlertMonitor monitor;
    monitor.Refresh(targets, AirportIndex(), BothAlerts(), 0);
    monitor.Refresh(targets, AirportIndex(), BothAlerts(), 1);
    std::vector<std::int32_t> firsts;
    for (const Alert& alert : monitor.Standing())
        firsts.push_back(alert.FirstId);
    EXPECT_THAT(firsts, testing::ElementsAre(5, 9, 3, 1));
    EXPECT_EQ(monitor.Refresh(targets, AirportIndex(), AlertOptions(), 2).size(), 4U) << "they end at once";
    EXPECT_TRUE(monitor.Standing().empty());
}

TEST(TrafficMonitor, TakesAMemberThatStandsTwiceInTheTableOnce)
{
    const auto grid = std::make_unique<MagVarGrid>();
    TrafficMonitor monitor(*grid);
    monitor.SetOptions({}, BothAlerts());
    PlayerRecord pilot;
    pilot.Name = "N1";
    pilot.PlayerId = 2;
    pilot.GroundSpeedKt = 100;
    const PlayerRecord again = pilot;
    const std::vector<const PlayerRecord*> pilots{&pilot, &again};
    for (int second = 0; second < 3; ++second) {
        monitor.Report(pilot, second);
        EXPECT_TRUE(monitor.Refresh(pilots, second).empty());
    }
}
} // namespace
} // namespace corvane
