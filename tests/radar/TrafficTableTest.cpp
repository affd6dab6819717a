#include "radar/TrafficTable.h"

#include <gmock/gmock.h>

namespace corvane {
namespace {
class TrafficTableTest : public testing::Test {
protected:
    TrafficTableTest()
    {
        m_players.Append("**ATC", 1, PilotRole);
        m_players.Append("N12", 2, PilotRole);
        m_players.Append("=cmd(\"x\")", 3, ObserverRole);
        m_players.Append("Silent", 4, PilotRole);
        PlayerRecord& pilot = m_players.Players()[1];
        pilot.Latitude = 1; // sixty miles north of the centre
        pilot.AltitudeFt = 3000;
        pilot.GroundSpeedKt = 120;
        pilot.AircraftType = "C172";
        pilot.FlightRules = 1;
        pilot.DestinationIcao = "KSEA";
        m_alerts.push_back({});
        m_alerts.back().FirstId = 2;
        m_alerts.back().SecondId = 4;
        m_alerts.push_back({});
        m_alerts.back().Kind = AlertKind::LowAltitude;
        m_alerts.back().FirstId = 2;
        m_heard[2] = 1000;
    }
    std::vector<TrafficRow> Rows()
    {
        return TrafficRows({m_players.Players(), 1, m_area, m_variation, m_alerts, m_heard, 8500, &m_radios});
    }

    class OfSilent final : public MemberRadios {
        [[nodiscard]] MemberRadio RadioOf(PlayerId member) const override
        {
            return member == 4 ? MemberRadio{std::uint16_t{21}, 118050} : MemberRadio{};
        }
    };

    OfSilent m_radios;
    PlayerTable m_players;
    AreaModel m_area;
    MagVarGrid m_variation{};
    std::vector<Alert> m_alerts;
    std::map<std::int32_t, std::int64_t> m_heard;
};

TEST_F(TrafficTableTest, TellsWhatTheScopeShowsOfEachMember)
{
    const auto rows = Rows();
    ASSERT_EQ(rows.size(), 3U) << "the own player is not listed";
    EXPECT_EQ(SpokenRow(rows[0]),
              "N12, C172, altitude 3000 feet, speed 120 knots, distance 60 miles, bearing 0 degrees, "
              "IFR, to KSEA, cruise altitude 0 feet, heard 7 seconds ago, alert conflict, too low");
    EXPECT_EQ(SpokenRow(rows[1]), "=cmd(\"x\"), observer");
    EXPECT_EQ(CellText(rows[2].At(TrafficColumn::Altitude)), "") << "not heard from yet";
    EXPECT_EQ(CellText(rows[2].At(TrafficColumn::Alert)), "conflict");
    EXPECT_EQ(CellText(rows[2].At(TrafficColumn::Code)), "0021");
    EXPECT_EQ(CellText(rows[2].At(TrafficColumn::Radio)), "118.050");
    EXPECT_EQ(rows[2].Position, std::nullopt);
}

TEST_F(TrafficTableTest, IsCopiedAsSpreadsheetsReadItAndCannotRunThere)
{
    const auto rows = Rows();
    EXPECT_EQ(TrafficCsv(std::span(rows).first(2)),
              "Callsign,Type,Altitude,Speed,Distance,Bearing,Code,Radio,Rules,From,To,Cruise,Age,Alert\n"
              "\"N12\",\"C172\",3000,120,60,0,,,\"IFR\",\"\",\"KSEA\",0,7,\"conflict, too low\"\n"
              "\"'=cmd(\"\"x\"\")\",\"observer\",,,,,,,,,,,,\"\"\n");
}

TEST_F(TrafficTableTest, StoresAFlightPlanAsItsEditorDoes)
{
    PlayerRecord& pilot = m_players.Players()[3];
    EXPECT_TRUE(StorePlan(pilot, TrafficColumn::Rules, " ifr "));
    EXPECT_TRUE(StorePlan(pilot, TrafficColumn::Departure, " kpdx "));
    EXPECT_TRUE(StorePlan(pilot, TrafficColumn::Cruise, "900 ft"));
    EXPECT_FALSE(StorePlan(pilot, TrafficColumn::Rules, "maybe"));
    EXPECT_FALSE(StorePlan(pilot, TrafficColumn::Cruise, "32768"));
    EXPECT_FALSE(StorePlan(pilot, TrafficColumn::Callsign, "N1"));
    EXPECT_EQ(pilot.FlightRules, 1);
    EXPECT_EQ(pilot.DepartureIcao, "kpdx");
    EXPECT_EQ(pilot.CruiseAltitude, 900);
    EXPECT_EQ(pilot.Name, "Silent");
}
} // namespace
} // namespace corvane
