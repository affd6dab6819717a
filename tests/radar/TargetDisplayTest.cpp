#include "radar/TargetDisplay.h"

#include "radar/RecordingSurface.h"
#include "tests/radar/OperationText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace corvane {
namespace {
using testing::Contains;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::Not;
using testing::SizeIs;

/// A scope of 100 pixels to a degree, on which blocks and lines are counted in whole pixels.
class TargetDisplayTest : public testing::Test {
protected:
    TargetDisplayTest() { Display->SetArea(Area); }

    PlayerRecord& Pilot(const char* name, double lat, double lon, std::int32_t altitudeFt, double heading = 90)
    {
        PlayerRecord& player = Players.emplace_back();
        player.Name = name;
        player.PlayerId = static_cast<std::int32_t>(Players.size()) + 100;
        player.Role = PilotRole;
        player.Latitude = lat;
        player.Longitude = lon;
        player.AltitudeFt = altitudeFt;
        player.MagHeading = heading;
        player.GroundSpeedKt = 250;
        return player;
    }
    /// A refresh at which all have reported, all but the silent.
    void Refresh(double now, const char* silent = "")
    {
        for (const PlayerRecord& player : Players)
            if (player.Name != silent)
                Display->Report(player, now);
        const MapScene scene{Area, *Grid, View, Flags};
        const Pilots members{Players, 1, "**ATC", Radios};
        Display->Refresh({scene, members, Options, Focus, Surface, now});
    }
    std::vector<std::string> Drawn()
    {
        Surface.Clear();
        Display->Draw(Surface, Options.Colours);
        EXPECT_EQ(Surface.State, DrawState());
        return OperationTexts(Surface);
    }
    const TargetMark& Mark(std::size_t index) { return Display->Marks().Targets.at(index); }

    AreaModel Area;
    std::unique_ptr<MagVarGrid> Grid = std::make_unique<MagVarGrid>();
    ScopeView View = TenDegreeView();
    DisplayFlags Flags;
    DisplayOptions Options = ModernDisplay();
    TargetFocus Focus;
    const MemberRadios* Radios = nullptr;
    RecordingSurface Surface;
    std::vector<PlayerRecord> Players;
    std::unique_ptr<TargetDisplay> Display = std::make_unique<TargetDisplay>(*Grid);
};

TEST_F(TargetDisplayTest, ACompactBlockSaysAltitudeTrendAndSpeed)
{
    Pilot("N1", 5, 4.99, 7150);
    Refresh(0);
    Players[0].Longitude = 5;
    Players[0].AltitudeFt = 7200; // 50 ft in 8 seconds: 375 ft a minute
    Refresh(8);
    const std::vector<std::string> drawn = Drawn();
    EXPECT_THAT(drawn, IsSupersetOf({"ellipse 495,505 505,495 pen 0,192,0 w1 solid fill 0,192,0",
                                     "line 500,500 515,500 pen 0,192,0 w1 solid", // heading
                                     "line 500,500 521,479 pen 0,192,0 w1 solid", // leader
                                     "text 521,453 0,192,0 N1", "text 521,466 0,192,0 072   25",
                                     "line 548,476 548,468 pen 0,192,0 w1 solid"})); // the arrow, upwards
    EXPECT_EQ(Mark(0).Block.Trend, TrackTrend::Climbing);
    EXPECT_EQ(Mark(0).Place.Box, (PixelBox{521, 453, 568, 479}));
}

struct ContentCase {
    const char* Name;
    const char* Set;
    std::int16_t SpeedKt;
    std::int32_t AltitudeFt;
    std::vector<std::string> Lines;
    MemberRadio Radio = {};
};
/// Everybody has the same.
class OneRadio final : public MemberRadios {
public:
    explicit OneRadio(MemberRadio radio) : m_radio(radio) {}
    [[nodiscard]] MemberRadio RadioOf(PlayerId /*member*/) const override { return m_radio; }

private:
    MemberRadio m_radio;
};
class BlockContents : public TargetDisplayTest, public testing::WithParamInterface<ContentCase> {};
TEST_P(BlockContents, FollowTheOptions)
{
    AirportRecord airport;
    airport.Icao = "KBIG";
    airport.Lat = 5;
    airport.Lon = 5;
    airport.ElevationFt = 400;
    Area.AreaAirports.push_back(airport);
    Display->SetArea(Area);
    PlayerRecord& pilot = Pilot("N1", 5, 5.04, GetParam().AltitudeFt); // 2.4 miles from the airport
    pilot.GroundSpeedKt = GetParam().SpeedKt;
    pilot.AircraftType = "B738";
    pilot.DestinationIcao = "KSEA";
    pilot.CruiseAltitude = 24000;
    if (const std::string set = GetParam().Set; !set.empty()) {
        ASSERT_TRUE(SetDisplayOption(Options, set));
    }
    const OneRadio radio(GetParam().Radio);
    Radios = &radio;
    Refresh(0);
    EXPECT_EQ(Mark(0).Block.Lines, GetParam().Lines);
}
INSTANTIATE_TEST_SUITE_P(
    Targets, BlockContents,
    testing::Values(
        ContentCase{"Compact", "", 250, 7249, {"N1", "072   25"}},
        ContentCase{"HalvesToEven", "", 245, 7250, {"N1", "072   24"}},
        ContentCase{"BelowTheSea", "", 95, -120, {"N1", "-01   10"}},
        ContentCase{"Full", "Blocks=full", 250, 35000, {"N1", "350   25", "B738 KSEA 240"}},
        ContentCase{"FullWithItsRadios",
                    "Blocks=full",
                    250,
                    35000,
                    {"N1", "350   25", "B738 KSEA 240", "0021 118.050"},
                    {21, 118050}},
        ContentCase{
            "FullWithACode", "Blocks=full", 250, 35000, {"N1", "350   25", "B738 KSEA 240", "7000"}, {7000, {}}},
        ContentCase{"CompactWithItsRadios", "", 250, 7249, {"N1", "072   25"}, {21, 118050}},
        ContentCase{
            "Classic", "Blocks=classic", 250, 35000, {"N1  Hdg: 90*  Alt: 35000ft", "GS: 250kts  Min Alt: -None-"}},
        ContentCase{"OnTheGround", "", 39, 700, {"N1"}}, ContentCase{"FortyKnots", "", 40, 700, {"N1", "007   04"}},
        ContentCase{"TooHighForTheGround", "", 39, 701, {"N1", "007   04"}},
        ContentCase{"OnTheGroundNothing", "GroundBlocks=none", 0, 400, {}},
        ContentCase{"OnTheGroundAll", "GroundBlocks=full", 0, 400, {"N1", "004   00"}}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST_F(TargetDisplayTest, SilenceMakesHollowAndDimButNothingVanishes)
{
    Pilot("N1", 5, 5, 7000).GroundSpeedKt = 0;
    Pilot("N2", 2, 2, 7000);
    Refresh(0);
    Refresh(9.9, "N1");
    EXPECT_FALSE(Mark(0).Stale);
    Refresh(10, "N1");
    EXPECT_THAT(Drawn(), Contains("ellipse 495,505 505,495 pen 0,134,0 w1 solid")); // no fill, 0.7 of the light
    Refresh(3000, "N1");
    EXPECT_THAT(Drawn(), Contains("text 521,453 0,86,0 N1")); // 0.45
    ASSERT_THAT(Display->Marks().Targets, SizeIs(2));
    Refresh(3001);
    EXPECT_FALSE(Mark(0).Stale);
}

TEST_F(TargetDisplayTest, FiltersMakeSmallDotsAndSaySo)
{
    Pilot("LOW", 5, 5, 4999);
    Pilot("IN", 5, 2, 5000);
    Pilot("HIGH", 2, 5, 24001);
    Options.FloorFt = 5000;
    Options.CeilingFt = 24000;
    Refresh(0);
    EXPECT_THAT(Drawn(), IsSupersetOf({"ellipse 498,502 502,498 pen 0,192,0 w1 solid fill 0,192,0",
                                       "text 8,979 200,200,200 FILTER 5000 to 24000 ft: 2 of 3 targets are dots"}));
    EXPECT_THAT(Drawn(), Not(Contains(HasSubstr("LOW"))));
    Focus.Selected = MemberKey{101, "LOW"};
    Refresh(1);
    EXPECT_THAT(Drawn(), Contains("text 521,453 160,255,160 LOW")) << "the selection is never filtered";
    Options.FloorFt = -2000;
    Options.CeilingFt = 100000;
    Refresh(2);
    EXPECT_THAT(Drawn(), Not(Contains(HasSubstr("FILTER"))));
}

TEST_F(TargetDisplayTest, PredictedAndLostSeparationDifferInMoreThanColour)
{
    Pilot("A", 5, 5, 24000, 90);
    Pilot("B", 5, 5.16, 24300, 270); // ten miles, 500 kt together: three miles in some 47 seconds
    Options.FloorFt = 30000;         // and alerts break through the filter
    for (int now = 0; now < 3; ++now)
        Refresh(now);
    std::vector<std::string> drawn = Drawn();
    EXPECT_EQ(Mark(0).Conflict, ConflictMark::Predicted);
    EXPECT_FALSE(Mark(0).Small);
    EXPECT_THAT(drawn, IsSupersetOf({"line 500,500 516,500 pen 255,220,0 w1 dash",
                                     "ellipse 491,509 509,491 pen 255,220,0 w1 dash"}));
    EXPECT_THAT(drawn, Contains(HasSubstr("! PREDICTED  A - B  69 s  0.0 nm  300 ft")));
    Display->Monitor().AcknowledgeAll();
    Refresh(3);
    EXPECT_THAT(Drawn(), Not(Contains(HasSubstr("! PREDICTED"))));
    Players[1].Longitude = 5.04; // 2.4 miles
    for (int now = 4; now < 12; ++now)
        Refresh(now);
    drawn = Drawn();
    EXPECT_EQ(Mark(0).Conflict, ConflictMark::Violated);
    EXPECT_THAT(drawn, IsSupersetOf({"line 500,500 504,500 pen 255,80,64 w2 solid",
                                     "ellipse 491,509 509,491 pen 255,80,64 w2 solid",
                                     "ellipse 487,513 513,487 pen 255,80,64 w2 solid"}));
    EXPECT_THAT(drawn, Contains(HasSubstr("! CONFLICT  A - B  NOW")));
}

TEST_F(TargetDisplayTest, TrailsAndMinutesAreDrawnAlongTheWay)
{
    Pilot("N1", 5, 5, 7000, 90).GroundSpeedKt = 360; // six miles a minute
    Options.PredictionMinutes = 2;
    Options.HistoryDots = 3;
    for (int now = 0; now <= 30; ++now) {
        Players[0].Longitude = 5 + now * 0.002;
        Refresh(now);
    }
    const auto points = [&](PointRange range) {
        const auto all = Display->Marks().PointsOf(range);
        return std::vector<ScopePoint>(all.begin(), all.end());
    };
    EXPECT_EQ(points(Mark(0).Trail), (std::vector<ScopePoint>{{505, 500}, {504, 500}, {503, 500}}));
    const std::vector<ScopePoint> minutes = points(Mark(0).Minutes);
    ASSERT_THAT(minutes, SizeIs(2));
    EXPECT_NEAR(minutes[0].X, 516, 1); // a tenth of a degree on
    EXPECT_NEAR(minutes[1].X, 526, 1);
    EXPECT_THAT(Drawn(), Contains("line 506,500 516,500 pen 0,144,0 w1 solid"));
}

TEST_F(TargetDisplayTest, SchemesRecolourAndDraggedBlocksStay)
{
    Pilot("N1", 5, 5, 7000);
    Options.Colours = ColourScheme::Safe;
    Refresh(0);
    EXPECT_THAT(Drawn(), Contains("text 521,453 154,255,102 N1"));
    Display->ByHand().Drag(Mark(0).Track, {-100, 40});
    Refresh(1);
    EXPECT_THAT(Drawn(),
                IsSupersetOf({"text 400,540 154,255,102 N1", "line 500,500 447,540 pen 154,255,102 w1 solid"}));
    EXPECT_EQ(Display->BlockAt({401, 541}), &Mark(0));
    EXPECT_EQ(Display->BlockAt({521, 453}), nullptr);
    EXPECT_EQ(Display->TargetAt({507, 500}), &Mark(0));
    EXPECT_EQ(Display->TargetAt({508, 500}), nullptr);
}
} // namespace
} // namespace corvane
