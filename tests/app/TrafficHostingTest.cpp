#include "app/TrafficHosting.h"

#include "app/FeedConnection.h"
#include "follow/SessionFollower.h"
#include "tests/core/TemporaryFolder.h"
#include "tests/net/LoopbackAddress.h"
#include "tests/traffic/NobodyListens.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <thread>

// Traffic from outside as a session on the network, which the program itself joins and others can.

namespace corvane {
namespace {
using test::LoopbackAddress;

class TrafficHostingTest : public testing::Test {
protected:
    void SetUp() override
    {
        m_state->Area.AreaCenter = {52, 4};
        std::ofstream(m_file) << R"({"now": 100, "aircraft": [{"hex": "40621d", "flight": "KLM1", "lat": 52.2,)"
                              << R"("lon": 4.1, "alt_baro": 3000, "gs": 210, "track": 90, "seen": 0, "seen_pos": 0}]})";
        const FeedWish wish{{FeedKind::JsonFile, "", 0, m_file.string()}};
        m_provider = std::make_unique<TrafficProvider>(
            HostedWhereWanted(MakeFeedConnection(*m_state, [wish] { return wish; }), *m_state, m_network),
            m_state->TrafficDetails);
    }
    /// Lives on until a condition holds, for some seconds at most.
    bool Until(SessionFollower& member, const std::function<bool()>& holds)
    {
        for (int i = 0; i < 1000; ++i) {
            m_nowMs += 10;
            if (!member.Tick(m_nowMs))
                return false;
            if (holds())
                return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return false;
    }
    static std::size_t SessionsFor(DirectPlayPeer& visitor)
    {
        const auto sessions = visitor.GetDPEnumSessions(0, EnumSessionsAvailable);
        return sessions ? sessions->size() : 0;
    }
    static DirectPlayOptions OtherMachine()
    {
        DirectPlayOptions options;
        options.BindAddress = LoopbackAddress(2);
        options.HostAddress = LoopbackAddress(1);
        options.Timers.Enumeration = directplay::Millis{400};
        return options;
    }

    const TemporaryFolder m_folder;
    const std::filesystem::path m_file = m_folder.Path() / "aircraft.json";
    ServedNetwork m_network;
    std::unique_ptr<TrafficProvider> m_provider;
    std::unique_ptr<AppState> m_state = std::make_unique<AppState>();
    std::unique_ptr<MagVarGrid> m_grid = std::make_unique<MagVarGrid>();
    test::NobodyListens m_events;
    std::int64_t m_nowMs = 0;
};

TEST_F(TrafficHostingTest, OthersSeeTheSameAircraftWhereItIsWantedAndNothingElsewhere)
{
    DirectPlayPeer visitor(OtherMachine());
    ASSERT_TRUE(visitor.InitializeConnection(DirectPlayConnectionAddress));
    for (const bool hosted : {true, false}) {
        m_state->TrafficServedAt = hosted ? LoopbackAddress(1) : "";
        SessionFollower member(*m_provider, *m_grid, m_events, FollowOptions{});
        ASSERT_TRUE(member.Join());
        const auto seesTheAircraft = [&] {
            for (const PlayerRecord& player : member.Players().Players())
                if (player.Name == "KLM1")
                    return true;
            return false;
        };
        ASSERT_TRUE(Until(member, seesTheAircraft)) << hosted;
        ASSERT_EQ(SessionsFor(visitor), hosted ? 1U : 0U);
        if (hosted) {
            ASSERT_TRUE(visitor.Open(visitor.GetDPEnumSessions(0, EnumSessionsAvailable)->front(), OpenJoin));
            const auto members = visitor.GetDPEnumPlayers();
            ASSERT_TRUE(members);
            EXPECT_THAT(*members,
                        testing::IsSupersetOf({testing::Field(&SessionMember::ShortName, "KLM1"),
                                               testing::Field(&SessionMember::ShortName, "**ATC Controller")}));
            EXPECT_FALSE(TryToServeAt(LoopbackAddress(1))) << "it is in use";
            ASSERT_TRUE(visitor.Close());
        }
        member.Leave("");
    }
    EXPECT_TRUE(TryToServeAt(LoopbackAddress(1)));
    EXPECT_FALSE(TryToServeAt("192.0.2.1")) << "no address of this machine";
}

TEST_F(TrafficHostingTest, ASessionOnTheNetworkHasLessRoom)
{
    EXPECT_EQ(RoomForTraffic(*m_state, 5000), 5000U);
    m_state->TrafficServedAt = "127.0.0.1";
    EXPECT_EQ(RoomForTraffic(*m_state, 5000), 997U);
    EXPECT_EQ(RoomForTraffic(*m_state, 20), 20U);
}
} // namespace
} // namespace corvane
