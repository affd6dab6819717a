#include "traffic/out/FeedOut.h"

#include "tests/traffic/TrafficPlay.h"
#include "traffic/feeds/AircraftFeed.h"
#include "traffic/feeds/BaseStationText.h"
#include "traffic/feeds/TextStream.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <map>
#include <sstream>
#include <thread>

namespace corvane {
namespace {
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

PlayerRecord Pilot(std::int32_t id, const char* name, double lat, double lon)
{
    PlayerRecord pilot;
    pilot.PlayerId = id;
    pilot.Name = name;
    pilot.Role = PilotRole;
    pilot.Latitude = lat;
    pilot.Longitude = lon;
    pilot.AltitudeFt = 5000;
    pilot.MagHeading = 90;
    pilot.GroundSpeedKt = 250;
    return pilot;
}

class TargetText : public testing::Test {
protected:
    /// The callsigns of the lines that are due, each of which must be one that a reader understands.
    std::vector<std::string> Due(std::int64_t nowMs)
    {
        std::vector<std::string> callsigns;
        std::istringstream lines(m_lines.Due(Players, nowMs, "2026/11/23,08:59:16.493"));
        for (std::string line; std::getline(lines, line);) {
            const auto report = DecodeBaseStationLine(line);
            EXPECT_TRUE(report) << line;
            callsigns.push_back(report ? report->Callsign : "?");
            if (report)
                Last[callsigns.back()] = *report;
        }
        return callsigns;
    }

    MagVarGrid m_grid;
    TrafficDetailsTable m_details;
    FeedTargets m_lines{m_grid, &m_details};
    std::vector<PlayerRecord> Players;
    std::map<std::string, FeedReport> Last;
};

TEST_F(TargetText, TellsWhoMovedOnceASecondAndWhoStandsNowAndThen)
{
    Players = {Pilot(1, "AAL1", 52, 4), Pilot(2, "BAW2", 53, 4)};
    EXPECT_THAT(Due(0), ElementsAre("AAL1", "BAW2"));
    Players[0].Latitude = 52.01;
    EXPECT_THAT(Due(999), IsEmpty());
    EXPECT_THAT(Due(1000), ElementsAre("AAL1"));
    EXPECT_THAT(Due(2000), IsEmpty());
    EXPECT_THAT(Due(20000), ElementsAre("BAW2"));
    m_lines.RepeatAll();
    EXPECT_THAT(Due(21000), ElementsAre("AAL1", "BAW2"));
    const FeedReport& report = Last.at("AAL1");
    EXPECT_EQ(report.Position, (LatLon{52.01, 4}));
    EXPECT_EQ(report.AltitudeFt, 5000);
    EXPECT_EQ(report.GroundSpeedKt, 250);
    EXPECT_EQ(report.TrackDeg, 90);
}

TEST_F(TargetText, LeavesOutWhoIsNoTarget)
{
    Players = {Pilot(1, "**ATC", 0, 0), Pilot(2, "WATCHER", 52, 4), Pilot(3, "LOST", 91, 4), Pilot(4, "NAN", NAN, 4)};
    Players[1].Role = ObserverRole;
    EXPECT_THAT(Due(0), IsEmpty());
}

TEST_F(TargetText, NamesBecomeCallsignsAndAddresses)
{
    Players = {Pilot(1, "a,b\r\nMSG", 52, 4), Pilot(2, "Friedrich Wilhelm", 52, 4),
               Pilot(3, "4CEB3F", 52, 4),     Pilot(4, "SAME", 52, 4),
               Pilot(5, "SAME", 52, 4),       Pilot(6, "\xC4\xD6", 52, 4)};
    EXPECT_THAT(Due(0), ElementsAre("abMSG", "Friedric", "4CEB3F", "SAME", "SAME", ""));
    EXPECT_EQ(Last.at("4CEB3F").Address, 0x4CEB3FU);
    const FeedAddress second = Last.at("SAME").Address;
    EXPECT_EQ(second >> 20, 0xDU);
    Players.erase(Players.begin() + 3); // the other of the name keeps its address
    EXPECT_THAT(Due(20000), testing::Contains("SAME"));
    EXPECT_EQ(Last.at("SAME").Address, second);
}

TEST_F(TargetText, TellsWhatASourceHasToldBesides)
{
    Players = {Pilot(1, "AAL1", 52, 4)};
    TrafficReport report;
    report.Squawk = 7700;
    report.Emergency = true;
    m_details.Of(1).Report = report;
    Due(0);
    EXPECT_EQ(Last.at("AAL1").Squawk, 7700);
    EXPECT_EQ(Last.at("AAL1").Emergency, true);
}

struct OutCase {
    const char* Name;
    const char* Text;
    const char* Address; ///< "" where the text is refused
    int Port;
};
class FeedOutPlaces : public testing::TestWithParam<OutCase> {};

TEST_P(FeedOutPlaces, AreRead)
{
    const auto place = ParseFeedOutPlace(GetParam().Text);
    EXPECT_EQ(place ? place->Address : "", GetParam().Address);
    EXPECT_EQ(place ? place->Port : 0, GetParam().Port);
}

INSTANTIATE_TEST_SUITE_P(FeedOut, FeedOutPlaces,
                         testing::Values(OutCase{"PortAlone", "sbs:30003", "127.0.0.1", 30003},
                                         OutCase{"Everywhere", "sbs:0.0.0.0:1", "0.0.0.0", 1},
                                         OutCase{"Six", "sbs:[::1]:7", "::1", 7}, OutCase{"NoPort", "sbs:", "", 0},
                                         OutCase{"AddressAlone", "sbs:10.0.0.1", "", 0},
                                         OutCase{"OtherKind", "json:5", "", 0}, OutCase{"Large", "sbs:65536", "", 0}),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST(FeedOutLink, IsWhatAFeedReads)
{
    const MagVarGrid grid;
    const auto out = FeedOut::Open({"127.0.0.1", 0}, grid, nullptr);
    ASSERT_TRUE(out);
    const auto taken = FeedOut::Open({"127.0.0.1", (*out)->Server().Port()}, grid, nullptr);
    ASSERT_FALSE(taken);
    EXPECT_THAT(taken.error().Text(), HasSubstr("127.0.0.1:"));
    const auto feed =
        OpenAircraftFeed({FeedKind::BaseStation, "127.0.0.1", (*out)->Server().Port(), ""}, {{52, 4}, 300, 100, {}});
    const std::vector<PlayerRecord> players{Pilot(1, "AAL1", 52, 4), Pilot(2, "BAW2", 53, 4)};
    test::Sky sky;
    for (std::int64_t now = 0; now < 200000 && sky.Names().size() < 2; now += 100) {
        (*out)->Tick(players, now);
        sky.Take(feed->Take(now));
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    EXPECT_THAT(sky.Names(), ElementsAre("AAL1", "BAW2"));
}

TEST(LineServer, DropsAReaderWhoDoesNotKeepUpAndNobodyElse)
{
    auto server = *LineServer::Open("127.0.0.1", 0);
    TextStream good("127.0.0.1", server->Port());
    TextStream slow("127.0.0.1", server->Port());
    std::size_t read = 0;
    const TextStream::Handlers reading{[] {}, [&read](ByteSpan bytes) { read += bytes.size(); },
                                       [](const std::string& why) { ADD_FAILURE() << why; }};
    bool connected = false;
    const TextStream::Handlers connecting{[&connected] { connected = true; }, [](ByteSpan) {},
                                          [](const std::string& why) { ADD_FAILURE() << why; }};
    for (int i = 0; i < 2000 && (server->ReaderCount() < 2 || !connected); ++i) {
        server->Accept();
        good.Poll(0, reading);
        if (!connected)
            slow.Poll(0, connecting);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    ASSERT_EQ(server->ReaderCount(), 2U);
    const std::string second(500000, 'x');
    std::size_t sent = 0;
    for (int i = 0; i < 200 && server->Dropped() == 0; ++i) {
        server->Send(second);
        sent += second.size();
        for (int tries = 0; tries < 1000 && read < sent; ++tries) {
            server->Send("");
            good.Poll(0, reading);
        }
        ASSERT_EQ(read, sent);
    }
    EXPECT_EQ(server->Dropped(), 1U);
    EXPECT_EQ(server->ReaderCount(), 1U);
}
} // namespace
} // namespace corvane
