#include "traffic/NearestTraffic.h"

#include "tests/traffic/TrafficPlay.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

namespace corvane {
namespace {
using test::Sky;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

/// A feed that tells what the test wants.
class ToldFeed final : public TrafficFeed {
public:
    explicit ToldFeed(TrafficEvents& next) : m_next(next) {}
    [[nodiscard]] std::string Name() const override { return "Told"; }
    TrafficEvents Take(std::int64_t /*nowMs*/) override { return std::exchange(m_next, {}); }
    void Tell(const TrafficWord& /*word*/) override {}
    [[nodiscard]] bool CanBeTalkedTo() const override { return true; }
    [[nodiscard]] std::string Health() const override { return "well"; }

private:
    TrafficEvents& m_next;
};

class NearestOf : public testing::Test {
protected:
    void Make(double radiusNm, std::size_t most)
    {
        m_nearest = std::make_unique<NearestTraffic>(
            std::make_unique<ToldFeed>(m_next),
            NearestTrafficOptions{{0, 179}, radiusNm, most, [this] { return Center; }});
    }
    /// Puts an aircraft, which may be new, so many miles east of the center, across the 180 degree meridian.
    void Put(TrafficKey key, double nm, bool emergency = false)
    {
        if (std::exchange(m_known[key], true) == false)
            m_next.emplace_back(
                AircraftAppeared{.Key = key, .Name = std::to_string(key), .ShortType = {}, .Title = {}});
        const double lon = 179 + nm / 60;
        AircraftMoved moved{key, {}};
        moved.Report.Position = {0, lon > 180 ? lon - 360 : lon};
        moved.Report.Emergency = emergency;
        moved.Report.Squawk = 7700;
        m_next.emplace_back(moved);
    }
    std::vector<std::string> Shown()
    {
        m_nowMs += 1000;
        m_sky.Take(m_nearest->Take(m_nowMs));
        EXPECT_EQ(m_sky.Disorder, 0);
        return m_sky.Names();
    }

    LatLon Center{0, 179};
    TrafficEvents m_next;
    std::map<TrafficKey, bool> m_known;
    std::unique_ptr<NearestTraffic> m_nearest;
    Sky m_sky;
    std::int64_t m_nowMs = 0;
};

TEST_F(NearestOf, LetsInWithinTheRadiusAndPutsOutATenthBeyond)
{
    Make(300, 100);
    for (const double nm : {299.0, 301.0, 0.0})
        Put(static_cast<TrafficKey>(nm), nm);
    EXPECT_THAT(Shown(), ElementsAre("0", "299"));
    Put(299, 329);
    Put(301, 299);
    EXPECT_THAT(Shown(), ElementsAre("0", "299", "301"));
    Put(299, 331);
    EXPECT_THAT(Shown(), ElementsAre("0", "301"));
    Put(299, 320); // not in yet again
    EXPECT_THAT(Shown(), ElementsAre("0", "301"));
    m_next.emplace_back(AircraftVanished{0});
    m_next.emplace_back(AircraftVanished{299});
    EXPECT_THAT(Shown(), ElementsAre("301"));
}

TEST_F(NearestOf, TakesTheNearestAndDoesNotLetThemFlicker)
{
    Make(300, 2);
    Put(1, 100);
    Put(2, 200);
    Put(3, 50);
    EXPECT_THAT(Shown(), ElementsAre("1", "3"));
    Put(2, 95); // nearer than 1, but not by a tenth
    EXPECT_THAT(Shown(), ElementsAre("1", "3"));
    Put(2, 90);
    EXPECT_THAT(Shown(), ElementsAre("2", "3"));
    Put(1, 85);
    EXPECT_THAT(Shown(), ElementsAre("2", "3"));
    m_next.emplace_back(AircraftVanished{3});
    EXPECT_THAT(Shown(), ElementsAre("1", "2"));
    EXPECT_EQ(m_nearest->Health(), "well");
    Put(4, 299);
    Shown();
    EXPECT_EQ(m_nearest->Health(), "well, 2 of them shown");
}

TEST_F(NearestOf, TellsNothingOfTheOthersButWhatTheySay)
{
    Make(300, 10);
    Put(1, 10);
    Put(2, 400, true);
    m_next.emplace_back(AircraftSaid{1, "here"});
    m_next.emplace_back(AircraftSaid{2, "far"});
    m_next.emplace_back(AircraftRenamed{2, "FAR"});
    m_next.emplace_back(AircraftMoved{77, {}});
    m_next.emplace_back(AircraftSaid{77, "nobody"});
    EXPECT_THAT(Shown(), ElementsAre("1"));
    EXPECT_THAT(m_sky.Notices, IsEmpty());
    EXPECT_THAT(m_sky.OutsidersLines, ElementsAre("2: far"));
    Put(2, 20, true);
    EXPECT_THAT(Shown(), UnorderedElementsAre("1", "FAR")); // under the name that it has by now
    EXPECT_THAT(m_sky.Notices, ElementsAre("FAR reports an emergency and squawks 7700"));
    Put(2, 21, true);
    Shown();
    EXPECT_EQ(m_sky.Notices.size(), 1U);
}

TEST_F(NearestOf, ManyEmergenciesAreNotToldAllAtOnce)
{
    Make(300, 1000);
    for (TrafficKey key = 1; key <= 500; ++key)
        Put(key, 10, true);
    EXPECT_EQ(Shown().size(), 500U);
    EXPECT_LE(m_sky.Notices.size(), 3U);
}

TEST_F(NearestOf, FollowsTheCenter)
{
    Make(300, 10);
    Put(1, 0);
    Put(2, 3000);
    EXPECT_THAT(Shown(), ElementsAre("1"));
    Center = {0, 179 + 50 - 360};
    EXPECT_THAT(Shown(), ElementsAre("2"));
}
} // namespace
} // namespace corvane
