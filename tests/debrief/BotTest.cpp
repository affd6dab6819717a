#include "core/GreatCircle.h"
#include "debrief/DebriefWatch.h"
#include "practice/PracticeSession.h"
#include "tests/practice/Controller.h"
#include "tests/practice/PracticeWorld.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <set>

// A controller made of a few rules takes a scenario to its end, so that practice can be controlled at all. It knows
// what a member of the session sees and hears, the phrase book and a chart: a stack over the beacon NO north of the
// field, runway 16R for landings and 16L for departures.

namespace corvane {
namespace {
const LatLon Field{47.45, -122.31};
const LatLon Beacon{47.6, -122.4};
constexpr int StackFt = 4000;
constexpr int LevelFt = 1000;

class Bot {
public:
    explicit Bot(test::Controller& atc) : m_atc(atc) {}

    /// Reads what is new in chat, and acts on what it sees.
    void Work()
    {
        for (; m_read < m_atc.Chat.size(); ++m_read)
            Hear(m_atc.Chat[m_read]);
        WatchApproach();
        LowerStack();
        ClearNext();
        Release();
        HandOff();
    }
    [[nodiscard]] std::size_t Landed() const { return m_landed; }
    [[nodiscard]] std::size_t HandedOff() const { return m_handed; }

private:
    void Hear(const std::string& line)
    {
        const std::size_t colon = line.find(": ");
        const std::string who = line.substr(0, colon);
        const std::string text = line.substr(colon + 2);
        if (text.starts_with("hello, at the stand"))
            m_atc.Say(who + " taxi to runway 16L");
        else if (text.starts_with("hello") && text.find("landing KBIG") != std::string::npos) {
            const int level = m_stack.empty() ? StackFt : std::max(StackFt, m_stack.back().second + LevelFt);
            m_stack.emplace_back(who, level);
            m_atc.Say(who + " maintain " + std::to_string(level) + ", hold at NO");
        } else if (text.find("ready for departure") != std::string::npos && !m_waiting.contains(who))
            m_waiting.insert(who);
    }
    [[nodiscard]] double RangeOf(const std::string& who, const LatLon& from) const
    {
        const PlayerRecord* player = m_atc.Find(who);
        return player == nullptr ? 999 : RangeNm({player->Latitude, player->Longitude}, from);
    }
    void WatchApproach()
    {
        const PlayerRecord* player = m_atc.Find(m_active);
        if (player != nullptr && player->AltitudeFt < 450 && player->GroundSpeedKt < 30) {
            m_active.clear();
            ++m_landed;
        }
    }
    /// Each goes down to the level below it when that has been left by a thousand feet.
    void LowerStack()
    {
        const PlayerRecord* below = m_atc.Find(m_active);
        for (auto& [who, level] : m_stack) {
            const int wanted = below == nullptr ? StackFt : std::max(StackFt, below->AltitudeFt + LevelFt - 50);
            const PlayerRecord* player = m_atc.Find(who);
            if (player == nullptr)
                continue;
            if (wanted <= level - LevelFt && std::abs(player->AltitudeFt - level) < 50) {
                level -= LevelFt;
                m_atc.Say(who + " descend " + std::to_string(level));
            }
            below = player;
        }
    }
    void ClearNext()
    {
        constexpr double InTheHoldNm = 6;
        if (!m_active.empty() || m_stack.empty())
            return;
        const auto [who, level] = m_stack.front();
        const PlayerRecord* player = m_atc.Find(who);
        if (player == nullptr || level != StackFt || std::abs(player->AltitudeFt - StackFt) > 50 ||
            RangeOf(who, Beacon) > InTheHoldNm || (!m_departed.empty() && RangeOf(m_departed, Field) < 2))
            return;
        m_active = who;
        m_stack.erase(m_stack.begin());
        m_atc.Say(who + " cleared ILS runway 16R");
    }
    /// One departure after the other, while nobody is on short final.
    void Release()
    {
        constexpr double ClearNm = 6;
        if (m_waiting.empty() || (!m_departed.empty() && RangeOf(m_departed, Field) < ClearNm) ||
            (!m_active.empty() && RangeOf(m_active, Field) < ClearNm))
            return;
        m_departed = *m_waiting.begin();
        m_waiting.erase(m_waiting.begin());
        m_out.insert(m_departed);
        m_atc.Say(m_departed + " fly heading 180, climb 3000, cleared for take-off");
    }
    void HandOff()
    {
        constexpr double BoundaryNm = 14;
        for (const std::string& who : std::set<std::string>(m_out))
            if (m_atc.Find(who) != nullptr && RangeOf(who, Field) > BoundaryNm) {
                m_atc.Say(who + " contact 124.8");
                m_out.erase(who);
                ++m_handed;
            }
    }

    test::Controller& m_atc;
    std::size_t m_read = 0;
    std::vector<std::pair<std::string, int>> m_stack; ///< from below: who, level
    std::string m_active;                             ///< on the approach
    std::set<std::string> m_waiting;                  ///< at the runway
    std::set<std::string> m_out;
    std::string m_departed; ///< the last one
    std::size_t m_landed = 0;
    std::size_t m_handed = 0;
};

/// Ten arrivals from the north, six departures to the south.
PracticeScenario Rush()
{
    PracticeScenario rush{.Name = "Rush"};
    constexpr std::array<AircraftKind, 5> Kinds{AircraftKind::Airliner, AircraftKind::LightJet, AircraftKind::Airliner,
                                                AircraftKind::TwinTurboprop, AircraftKind::Airliner};
    constexpr std::array<double, 3> Bearings{300, 350, 40};
    for (int i = 0; i < 10; ++i)
        rush.Aircraft.push_back({.Kind = Kinds[static_cast<std::size_t>(i) % Kinds.size()],
                                 .AtS = 20 + i * 300.0,
                                 .BearingDeg = Bearings[static_cast<std::size_t>(i) % Bearings.size()],
                                 .DistanceNm = 40,
                                 .AltitudeFt = 11000});
    for (int i = 0; i < 6; ++i)
        rush.Aircraft.push_back({.Kind = i == 3 ? AircraftKind::PistonSingle : AircraftKind::Airliner,
                                 .AtS = 100 + i * 500.0,
                                 .OnGround = true,
                                 .To = "KMID"});
    return rush;
}

class Bots : public testing::TestWithParam<int> {};

TEST_P(Bots, TakeArrivalsToTheRunwayAndDeparturesToTheBoundary)
{
    const auto grid = std::make_unique<MagVarGrid>();
    InMemoryNetwork network;
    InMemoryProvider provider(network);
    PracticeOptions options;
    options.Seed = static_cast<std::uint64_t>(GetParam());
    options.Scenario = Rush();
    const auto practice = PracticeSession::Create(provider, test::MakeScene(), *grid, options);
    ASSERT_TRUE(practice);
    AreaModel area;
    area.AreaAirports = test::PracticeAirports();
    area.AreaCenter = Field;
    DebriefWatch watch(area, *grid);
    test::Controller atc(network);
    atc.Ask();
    double now = 0;
    (*practice)->Advance(++now);
    ASSERT_TRUE(atc.HandshakeTick());
    Bot bot(atc);
    std::size_t heard = 0;
    constexpr int LongestS = 3 * 3600;
    while (now < LongestS && (bot.Landed() < 10 || bot.HandedOff() < 6)) {
        (*practice)->Advance(++now);
        atc.PumpTick();
        for (const PlayerRecord& player : atc.Players.Players())
            watch.Meet(player);
        bot.Work();
        for (; heard < atc.Chat.size(); ++heard) {
            const std::size_t colon = atc.Chat[heard].find(": ");
            watch.Hear(atc.Chat[heard].substr(0, colon), atc.Chat[heard].substr(colon + 2), now);
        }
        watch.Refresh(atc.Players.Players(), now);
    }
    const Debrief debrief = watch.Judge("Rush");
    EXPECT_EQ(bot.Landed(), 10U) << now;
    EXPECT_EQ(bot.HandedOff(), 6U) << now;
    EXPECT_EQ(debrief.NotUnderstood, 0);
    EXPECT_EQ(debrief.Refused, 0);
    for (const DebriefItem& item : debrief.Items)
        EXPECT_TRUE(item.Kind != DebriefKind::Separation && item.Kind != DebriefKind::Wake)
            << item.TimeS << ' ' << item.Who.front() << ' ' << item.Who.back() << ": " << item.What << "; " << item.Why;
}

INSTANTIATE_TEST_SUITE_P(Seeds, Bots, testing::Range(1, 21));
} // namespace
} // namespace corvane
