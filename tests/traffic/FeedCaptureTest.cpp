#include "core/GreatCircle.h"
#include "tests/traffic/TrafficPlay.h"
#include "traffic/feeds/AircraftJsonSource.h"
#include "traffic/feeds/BaseStationSource.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>

namespace corvane {
namespace {
using test::Sky;

struct Truth {
    std::string Name;
    LatLon Position;
    double AltitudeFt = 0;
    double SpeedKt = 0;
    double TrackDeg = 0;
    double ClimbFtMin = 0;
    unsigned Squawk = 0;
};

std::string Content(const std::string& name)
{
    std::ifstream file(std::string(CORVANE_TRAFFIC_DATA) + '/' + name, std::ios::binary);
    EXPECT_TRUE(file) << name;
    return {std::istreambuf_iterator<char>(file), {}};
}

/// How the aircraft of a capture were at a second, by the name that they are to have; callsign "-" is the address.
std::map<std::string, Truth> TruthAt(const std::string& file, double second)
{
    std::map<std::string, Truth> truth;
    std::istringstream lines(Content(file));
    std::string line;
    std::getline(lines, line); // the head
    while (std::getline(lines, line)) {
        std::istringstream in(line);
        double time = 0;
        std::string address;
        Truth one;
        in >> time >> address >> one.Name >> one.Position.Lat >> one.Position.Lon >> one.AltitudeFt >> one.SpeedKt >>
            one.TrackDeg >> one.ClimbFtMin >> one.Squawk;
        if (one.Name == "-")
            one.Name = address;
        if (time == second)
            truth.emplace(one.Name, one);
    }
    return truth;
}

/// The receiver's roundings, and what changes in the time by which its output is late.
void ExpectNear(const TrafficReport& report, const Truth& truth, double lateS)
{
    constexpr double DegreesTurnedPerS = 0.8;
    constexpr double RoundingNm = 0.003;
    EXPECT_LE(RangeNm(report.Position, truth.Position), truth.SpeedKt * lateS / 3600 + RoundingNm);
    EXPECT_NEAR(report.AltitudeFt, truth.AltitudeFt, 25 + std::abs(truth.ClimbFtMin) * lateS / 60);
    EXPECT_NEAR(report.GroundSpeedKt, truth.SpeedKt, 1);
    EXPECT_LE(std::abs(TurnTo(report.TrueHeading, truth.TrackDeg)), 1 + DegreesTurnedPerS * lateS);
    if (!report.Emergency) { // which the truth does not list
        EXPECT_EQ(report.Squawk, truth.Squawk);
    }
}

/// Plays a capture up to a time.
void Play(const std::string& file, double until, BaseStationSource& source, Sky& sky)
{
    std::istringstream lines(Content(file));
    for (std::string line; std::getline(lines, line);) {
        const std::size_t blank = line.find(' ');
        const double time = std::stod(line.substr(0, blank));
        if (time > until)
            break;
        const auto nowMs = static_cast<std::int64_t>(time * 1000);
        source.Receive(test::BytesOf(line.substr(blank + 1) + '\n'), nowMs);
        source.Advance(nowMs);
        sky.Take(source.TakeEvents());
    }
}

TEST(FeedCapture, LinesTellTheTruth)
{
    constexpr double LateS = 1.3; // a second from one report of a value to the next
    BaseStationSource north;
    Sky sky;
    Play("north.sbs", 8, north, sky);
    const auto truth = TruthAt("north.truth", 8);
    EXPECT_EQ(truth.size(), 10U);
    EXPECT_EQ(sky.Names().size(), truth.size());
    for (const auto& [name, one] : truth) {
        SCOPED_TRACE(name);
        ASSERT_NE(sky.Find(name), nullptr);
        ExpectNear(sky.Find(name)->Report, one, LateS);
    }
    EXPECT_EQ(sky.Disorder, 0);
}

TEST(FeedCapture, AnEmergencyBeginsAndASilentOneStaysItsMinute)
{
    BaseStationSource south;
    Sky sky;
    Play("south.sbs", 24.5, south, sky);
    ASSERT_NE(sky.Find("BAW9756"), nullptr);
    EXPECT_FALSE(sky.Find("BAW9756")->Report.Emergency);
    Play("south.sbs", 28, south, sky);
    EXPECT_TRUE(sky.Find("BAW9756")->Report.Emergency);
    EXPECT_EQ(sky.Find("BAW9756")->Report.Squawk, 7700U);
    const auto silent = [&](std::int64_t nowMs) {
        south.Advance(nowMs);
        sky.Take(south.TakeEvents());
        return sky.Find("G7630") != nullptr || sky.Find("83CF25") != nullptr;
    };
    EXPECT_TRUE(silent(79900));
    EXPECT_FALSE(silent(80600)); // its last word came at 20.103 s
    EXPECT_NE(sky.Find("BAW9756"), nullptr);
}

struct FileCase {
    const char* Name;
    const char* File;
    const char* Truth;
    double Second;
    std::size_t Aircraft;
    const char* Silent; ///< whose position is not of that second
};
class FeedCaptureFile : public testing::TestWithParam<FileCase> {};

TEST_P(FeedCaptureFile, TellsTheTruth)
{
    AircraftJsonSource source;
    Sky sky;
    source.Receive(test::BytesOf(Content(GetParam().File)), 1000);
    sky.Take(source.TakeEvents());
    const auto truth = TruthAt(GetParam().Truth, GetParam().Second);
    EXPECT_EQ(sky.Names().size(), GetParam().Aircraft);
    for (const auto& [name, one] : truth) {
        SCOPED_TRACE(name);
        ASSERT_NE(sky.Find(name), nullptr);
        if (name != GetParam().Silent)
            ExpectNear(sky.Find(name)->Report, one, 1.5);
    }
}

INSTANTIATE_TEST_SUITE_P(Captures, FeedCaptureFile,
                         testing::Values(FileCase{"North", "north-15s.json", "north-15s.truth", 15, 10, ""},
                                         FileCase{"South", "south-35s.json", "south-35s.truth", 35, 6, "G7630"}),
                         [](const auto& row) { return std::string(row.param.Name); });
} // namespace
} // namespace corvane
