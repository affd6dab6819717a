#include "tests/traffic/TrafficPlay.h"
#include "traffic/feeds/AircraftJsonSource.h"
#include "traffic/feeds/BackOff.h"
#include "traffic/feeds/BaseStationSource.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>

namespace corvane {
namespace {
using test::BytesOf;
using test::Sky;
using testing::ElementsAre;
using testing::IsEmpty;

std::string At(const char* address, double lat, double lon, const char* callsign = "")
{
    return std::string("MSG,3,1,1,") + address + ",1,,,,," + callsign + ",1000,,," + std::to_string(lat) + ',' +
           std::to_string(lon) + ",,,,,,0\n";
}

/// A source whose lines come at times that the test sets.
class FeedLines : public testing::Test {
protected:
    void Say(std::int64_t nowMs, const std::string& lines)
    {
        m_source.Receive(BytesOf(lines), nowMs);
        Wait(nowMs);
    }
    void Wait(std::int64_t nowMs)
    {
        m_source.Advance(nowMs);
        Aircraft.Take(m_source.TakeEvents());
        EXPECT_EQ(Aircraft.Disorder, 0);
    }
    [[nodiscard]] LatLon Place(const char* name) const { return Aircraft.Find(name)->Report.Position; }

    Sky Aircraft;
    BaseStationSource m_source;
};

TEST_F(FeedLines, AnAircraftAppearsWithItsFirstPosition)
{
    Say(0, "MSG,3,1,1,4CEB3F,1,,,,,,26200,,,,,,,,,,0\nMSG,4,1,1,4CEB3F,1,,,,,,,409,210,,,-1216,,,,,0\n");
    EXPECT_THAT(Aircraft.Names(), IsEmpty());
    Say(500, At("4CEB3F", 52, 4));
    ASSERT_THAT(Aircraft.Names(), ElementsAre("4CEB3F"));
    const TrafficReport& report = Aircraft.Find("4CEB3F")->Report;
    EXPECT_EQ(report.AltitudeFt, 1000);
    EXPECT_EQ(report.GroundSpeedKt, 409);
    EXPECT_EQ(report.TrueHeading, 210);
    EXPECT_EQ(report.Squawk, std::nullopt);
    EXPECT_EQ(Aircraft.Find("4CEB3F")->Told.Title, "4CEB3F");
}

TEST_F(FeedLines, ACallsignRenamesAndAddressesKeepAircraftApart)
{
    Say(0, At("00000A", 52, 4) + At("00000B", 53, 4));
    Say(100, "MSG,1,1,1,00000A,1,,,,,SAME    ,,,,,,,,,,,0\nMSG,1,1,1,00000B,1,,,,,SAME,,,,,,,,,,,0\n");
    EXPECT_THAT(Aircraft.Names(), ElementsAre("SAME", "SAME"));
    Say(200, "MSG,1,1,1,00000A,1,,,,,OTHER   ,,,,,,,,,,,0\nMSG,1,1,1,00000A,1,,,,,        ,,,,,,,,,,,0\n");
    EXPECT_THAT(Aircraft.Names(), ElementsAre("OTHER", "SAME"));
}

TEST_F(FeedLines, AnAircraftIsGoneAMinuteAfterItsLastWordAndComesAgain)
{
    Say(0, At("00000A", 52, 4, "A") + At("00000B", 53, 4, "B"));
    Say(30000, "MSG,8,1,1,00000A,1,,,,,,,,,,,,,,,,0\n"); // any word counts
    Wait(59900);
    EXPECT_THAT(Aircraft.Names(), ElementsAre("A", "B"));
    Wait(60250);
    EXPECT_THAT(Aircraft.Names(), ElementsAre("A"));
    Wait(90250);
    EXPECT_THAT(Aircraft.Names(), IsEmpty());
    Say(91000, At("00000A", 10, 10));
    EXPECT_THAT(Aircraft.Names(), ElementsAre("00000A")); // nothing is left of before
}

TEST_F(FeedLines, AReceiverMayEndAnAircraft)
{
    Say(0, At("00000A", 52, 4) + At("00000B", 53, 4));
    Say(10, "STA,,5,179,00000A,1,,,,,SL\nSTA,,5,179,00000B,1,,,,,RM\nSTA,,5,179,00000C,1,,,,,RM\n");
    EXPECT_THAT(Aircraft.Names(), ElementsAre("00000A"));
}

TEST_F(FeedLines, HoldAPositionBackThatCannotBeReached)
{
    Say(0, At("00000A", 52, 4));
    Say(1000, At("00000A", 53, 4)); // 60 nm in a second
    EXPECT_EQ(Place("00000A"), (LatLon{52, 4}));
    Say(2000, At("00000A", 52.003, 4)); // the one before was wrong
    EXPECT_EQ(Place("00000A"), (LatLon{52.003, 4}));
    Say(3000, At("00000A", 53, 4));
    EXPECT_EQ(Place("00000A"), (LatLon{52.003, 4}));
    Say(4000, At("00000A", 53.002, 4)); // a second one agrees: the ones before were wrong
    EXPECT_EQ(Place("00000A"), (LatLon{53.002, 4}));
    Say(64000, "MSG,8,1,1,00000A,1,,,,,,,,,,,,,,,,0\n" + At("00000A", 10, -170)); // nobody knows after a minute
    EXPECT_EQ(Place("00000A"), (LatLon{10, -170}));
}

TEST_F(FeedLines, APoleAndTheDateLineAreNoJumps)
{
    Say(0, At("00000A", 10, 179.9999) + At("00000B", 89.9999, 0));
    Say(1000, At("00000A", 10, -179.9999) + At("00000B", 89.9999, 180));
    EXPECT_EQ(Place("00000A"), (LatLon{10, -179.9999}));
    EXPECT_EQ(Place("00000B"), (LatLon{89.9999, 180}));
}

TEST_F(FeedLines, TellAReportForEveryWordButOnlyOneAtATime)
{
    const auto reports = [this] { return Aircraft.Find("00000A")->Reports; };
    Say(0, At("00000A", 52, 4) + At("00000A", 52.001, 4) + At("00000A", 52.002, 4));
    EXPECT_EQ(reports(), 1);
    Say(1000, At("00000A", 52.002, 4)); // it stands still, and is there
    EXPECT_EQ(reports(), 2);
    Say(2000, "MSG,8,1,1,00000A,1,,,,,,,,,,,,,,,,0\n"); // says nothing of where it is
    EXPECT_EQ(reports(), 2);
}

TEST_F(FeedLines, AnEmergencyIsItsFlagOrItsSquawk)
{
    const auto emergency = [this] { return Aircraft.Find("00000A")->Report.Emergency; };
    Say(0, At("00000A", 52, 4));
    EXPECT_FALSE(emergency());
    Say(1, "MSG,6,1,1,00000A,1,,,,,,,,,,,,7600,0,0,0,\n");
    EXPECT_TRUE(emergency());
    Say(2, "MSG,6,1,1,00000A,1,,,,,,,,,,,,1000,0,-1,0,\n");
    EXPECT_TRUE(emergency());
    Say(3, "MSG,6,1,1,00000A,1,,,,,,,,,,,,,0,0,0,\n");
    EXPECT_FALSE(emergency());
}

TEST_F(FeedLines, AFloodOfAddressesIsBounded)
{
    std::string flood;
    for (unsigned i = 1; i <= FeedAircraftTable::MostAircraft + 1000; ++i) {
        std::array<char, 32> line{};
        std::snprintf(line.data(), line.size(), "MSG,8,1,1,%06X,1\n", i);
        flood += line.data();
    }
    Say(0, flood);
    EXPECT_EQ(m_source.Table().Count(), FeedAircraftTable::MostAircraft);
    Wait(60250);
    EXPECT_EQ(m_source.Table().Count(), 0U);
}

TEST_F(FeedLines, AStreamThatStartsAnewForgetsTheBegunLine)
{
    Say(0, "MSG,3,1,1,00000A,1,,,,,,1000,,,52,4");
    m_source.Restart(1);
    Say(1, At("00000B", 53, 4));
    EXPECT_THAT(Aircraft.Names(), ElementsAre("00000B"));
}

std::string File(const std::string& now, const std::string& aircraft)
{
    return "{" + (now.empty() ? "" : "\"now\":" + now + ",") + R"("aircraft":[)" + aircraft + "]}";
}

/// A file that is read at times that the test sets.
class FeedFile : public testing::Test {
protected:
    std::vector<std::string> Read(std::int64_t nowMs, const std::string& file)
    {
        m_source.Receive(BytesOf(file), nowMs);
        m_source.Advance(nowMs);
        Aircraft.Take(m_source.TakeEvents());
        EXPECT_EQ(Aircraft.Disorder, 0);
        return Aircraft.Names();
    }

    Sky Aircraft;
    AircraftJsonSource m_source;
    static constexpr const char* A = R"({"hex":"00000a","lat":52,"lon":4,"seen":0,"seen_pos":0})";
    static constexpr const char* B = R"({"hex":"00000b","lat":52,"lon":4,"seen":0,"seen_pos":59})";
};

TEST_F(FeedFile, WhoIsNoLongerInItIsGone)
{
    EXPECT_THAT(Read(0, File("100", std::string(A) + ',' + B)), ElementsAre("00000A", "00000B"));
    EXPECT_THAT(Read(1000, File("101", A)), ElementsAre("00000A"));
    EXPECT_THAT(Read(2000, File("101", "")), ElementsAre("00000A")); // the same file: the producer has said nothing
    EXPECT_THAT(Read(3000, R"({"now":102,"aircraft":[{)"), ElementsAre("00000A"));
    EXPECT_THAT(Read(4000, File("103", "")), IsEmpty());
}

TEST_F(FeedFile, APositionOlderThanAMinuteIsNone)
{
    EXPECT_THAT(Read(0, File("100", R"({"hex":"00000c","lat":1,"lon":1,"seen":1,"seen_pos":60.5})")), IsEmpty());
    EXPECT_THAT(Read(1000, File("101", B)), ElementsAre("00000B"));
    EXPECT_THAT(Read(2500, File("102", R"({"hex":"00000b","lat":52,"lon":4,"seen":0,"seen_pos":60.5})")), IsEmpty());
}

TEST_F(FeedFile, ThatIsNotRenewedGrowsOld)
{
    EXPECT_THAT(Read(0, File("100", A)), ElementsAre("00000A"));
    EXPECT_THAT(Read(59900, File("100", A)), ElementsAre("00000A"));
    EXPECT_THAT(Read(60250, File("100", A)), IsEmpty());
}

TEST_F(FeedFile, WithoutATimeIsNewWhenItsBytesAre)
{
    EXPECT_THAT(Read(0, File("", A)), ElementsAre("00000A"));
    EXPECT_THAT(Read(60250, File("", A)), IsEmpty());
    EXPECT_THAT(Read(60500, File("", std::string(A) + ' ')), ElementsAre("00000A"));
}

TEST_F(FeedFile, ClocksThatAreSetAreNoNews)
{
    for (const char* const now : {"100", "90", "1e300", "-5", "1e12", "101"})
        EXPECT_THAT(Read(0, File(now, A)), ElementsAre("00000A")) << now;
}

TEST_F(FeedFile, OldWordsAreNoNewReports)
{
    const auto reports = [this] { return Aircraft.Find("00000A")->Reports; };
    Read(0, File("100", A));
    Read(1010, File("101", R"({"hex":"00000a","lat":52,"lon":4,"seen":1.1,"seen_pos":1})"));
    EXPECT_EQ(reports(), 1);
    Read(2020, File("102", R"({"hex":"00000a","lat":52,"lon":4,"seen":0.3,"seen_pos":0.3})"));
    EXPECT_EQ(reports(), 2);
    Read(3000, File("103", R"({"hex":"00000a","lat":52,"lon":4,"seen":0.3,"altitude":200})"));
    EXPECT_EQ(Aircraft.Find("00000A")->Report.AltitudeFt, 200);
}

TEST_F(FeedFile, TellsTypeAndEngine)
{
    Read(0, File("1", R"({"hex":"00000a","lat":1,"lon":1,"category":"A7"},{"hex":"00000b","lat":1,"lon":1,"t":"B738",
                       "category":"A3"},{"hex":"00000c","lat":1,"lon":1,"category":"C2"})"));
    EXPECT_EQ(Aircraft.Find("00000A")->Told.EngineType, "Helicopter");
    EXPECT_EQ(Aircraft.Find("00000A")->Told.Title, "A7");
    EXPECT_EQ(Aircraft.Find("00000B")->Told.EngineType, "Jet Plane");
    EXPECT_EQ(Aircraft.Find("00000B")->Told.ShortType, "B738");
    EXPECT_EQ(Aircraft.Find("00000C")->Told.EngineType, "");
}

TEST(BackOff, DoublesUpToHalfAMinuteAndBeginsAnewAfterALinkThatHeld)
{
    BackOff backOff;
    std::int64_t now = 0;
    for (const std::int64_t delay : {1, 2, 4, 8, 16, 30, 30}) {
        backOff.Failed(now);
        EXPECT_FALSE(backOff.MayTry(now + delay * 1000 - 1)) << delay;
        now += delay * 1000;
        EXPECT_TRUE(backOff.MayTry(now)) << delay;
    }
    backOff.Opened(now);
    backOff.Failed(now + BackOff::HoldsMs - 1);
    EXPECT_FALSE(backOff.MayTry(now + BackOff::HoldsMs + 20000)); // it broke at once
    backOff.Opened(now);
    backOff.Opened(now + BackOff::HoldsMs - 1);
    backOff.Failed(now + BackOff::HoldsMs);
    EXPECT_TRUE(backOff.MayTry(now + BackOff::HoldsMs + 1000));
}
} // namespace
} // namespace corvane
