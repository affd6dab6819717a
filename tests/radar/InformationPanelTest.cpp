#include "radar/InformationPanel.h"

#include "tests/radar/OperationText.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

namespace corvane {
namespace {
constexpr std::int32_t OwnId = 7;

AirspaceRecord Airspace(const char* kind, double lat, double lon)
{
    AirspaceRecord airspace;
    airspace.ComName = "Zurich Center";
    airspace.Kind = kind;
    airspace.Frequency = "124.35 Mhz";
    airspace.CenterLat = lat;
    airspace.CenterLon = lon;
    airspace.Floor = 7000;
    airspace.Ceiling = 2500;
    return airspace;
}

NavaidRecord Navaid(const char* name, double lat, double lon)
{
    return {name, "TRA", lat, lon, "350.5", 200};
}

PlayerRecord Pilot(const char* name, double lat, double lon)
{
    PlayerRecord player;
    player.Name = name;
    player.PlayerId = 100;
    player.Role = PilotRole;
    player.Latitude = lat;
    player.Longitude = lon;
    player.AltitudeFt = 4500;
    player.MagHeading = 93;
    player.GroundSpeedKt = 120;
    player.AircraftType = "Jet Plane";
    player.CruiseAltitude = 9000;
    return player;
}

RunwayRecord Runway(double lat1, double lon1, double lat2, double lon2)
{
    RunwayRecord runway;
    runway.Designation = "9L";
    runway.ReciprocalDesignation = "27R";
    runway.End1Lat = lat1;
    runway.End1Lon = lon1;
    runway.End2Lat = lat2;
    runway.End2Lon = lon2;
    runway.ElevationFt = 1416;
    runway.MagHeading = 88;
    runway.ReciprocalMagHeading = 268;
    runway.LengthFt = 12139;
    runway.WidthFt = 197;
    return runway;
}

/// One object of every kind, none of them near the others; degrees times 100 are pixels.
enum class Kind { Sector, Tracon, ClassB, ClassC, LowSector, Ndb, Vor, Pilot, Gate, RunwayEnd1, RunwayEnd2, Ils };
constexpr LatLon PlaceOf(Kind kind)
{
    return {5, 1 + 0.5 * static_cast<int>(kind)};
}

class Panel : public testing::Test {
protected:
    Panel()
    {
        const auto at = [](Kind kind) { return PlaceOf(kind); };
        for (const auto& [kind, text] : {std::pair{Kind::Sector, HighSectorKind}, std::pair{Kind::Tracon, TraconKind},
                                         std::pair{Kind::ClassB, ClassBKind}, std::pair{Kind::ClassC, ClassCKind},
                                         std::pair{Kind::LowSector, LowSectorKind}})
            area.AreaAirspaces.push_back(Airspace(text, at(kind).Lat, at(kind).Lon));
        area.AreaNdbs = {Navaid("Alpha", at(Kind::Ndb).Lat, at(Kind::Ndb).Lon)};
        area.AreaVors = {Navaid("Trasadingen", at(Kind::Vor).Lat, at(Kind::Vor).Lon)};
        players = {::corvane::Pilot("N123", at(Kind::Pilot).Lat, at(Kind::Pilot).Lon)};
        AirportRecord airport;
        airport.Parkings = {{"Gate a 12", at(Kind::Gate).Lat, at(Kind::Gate).Lon, 60}};
        airport.Runways = {Runway(at(Kind::RunwayEnd1).Lat, at(Kind::RunwayEnd1).Lon, at(Kind::RunwayEnd2).Lat,
                                  at(Kind::RunwayEnd2).Lon)};
        airport.Ils = {{"IKL", at(Kind::Ils).Lat, at(Kind::Ils).Lon, 137, "110.5"}};
        area.AreaAirports = {airport};
        view.ZoomLevel = 34;
    }

    PanelAnswer Tick() { return PanelTick({area, grid, view, flags}, {players, OwnId, "**Tower"}, pointer); }
    /// The pointer rests some pixels right of and below a position.
    PanelAnswer TickAt(LatLon at, int dx = 0, int dy = 0)
    {
        MovePointer(pointer, {static_cast<float>(at.Lon + dx / 100.0), static_cast<float>(at.Lat - dy / 100.0)});
        return Tick();
    }
    std::string TextAt(Kind kind, int dx = 0, int dy = 0) { return TickAt(PlaceOf(kind), dx, dy).Text; }

    AreaModel area;
    MagVarGrid grid;
    ScopeView view = TenDegreeView();
    DisplayFlags flags;
    std::vector<PlayerRecord> players;
    PointerState pointer;
};

TEST_F(Panel, TellsEachKindInItsOwnWords)
{
    EXPECT_EQ(TextAt(Kind::Sector), "AIRSPACE FULLNAME: Zurich Center\r\nAIRSPACE TYPE: ARTCC/FIR (HIGH)\r\n"
                                    "FREQUENCY: 124.35 Mhz");
    EXPECT_EQ(TextAt(Kind::Tracon), "AIRSPACE FULLNAME: Zurich Center\r\nAIRSPACE TYPE: TRACON (Departure/Approach)\r\n"
                                    "FREQUENCY: 124.35 Mhz\r\nFROM ALTITUDE: 2500 ft\r\nTO ALTITUDE: 7000 ft");
    EXPECT_EQ(TextAt(Kind::ClassB),
              "AIRSPACE TYPE: Airspace Class B\r\nFROM ALTITUDE: 2500 ft\r\nTO ALTITUDE: 7000 ft");
    EXPECT_EQ(TextAt(Kind::Ndb),
              "NDB FULLNAME: Alpha\r\nNDB ID: TRA\r\nNDB FREQUENCY: 350.5 Mhz\r\nNDB RANGE: 200 miles");
    EXPECT_EQ(TextAt(Kind::Vor),
              "VOR FULLNAME: Trasadingen\r\nVOR ID: TRA\r\nVOR FREQUENCY: 350.5 Mhz\r\nVOR RANGE: 200 miles");
    EXPECT_EQ(TextAt(Kind::RunwayEnd1),
              "RUNWAY: 9L\r\nHEADING: 88\r\nALTITUDE: 1416 ft\r\nLENGHT: 12139 ft\r\nWIDTH: 197 ft");
    EXPECT_EQ(TextAt(Kind::RunwayEnd2),
              "RUNWAY: 27R\r\nHEADING: 268\r\nALTITUDE: 1416 ft\r\nLENGHT: 12139 ft\r\nWIDTH: 197 ft");
    EXPECT_EQ(TextAt(Kind::Ils), "ILS: IKL\r\nHEADING: 137\r\nFREQUENCY: 110.5 Mhz");
    view.ZoomLevel = 35;
    EXPECT_EQ(TextAt(Kind::Gate), "GATE A 12\r\nRADIUS: 60 ft");
    area.AreaAirports[0].Parkings[0].Name.clear();
    EXPECT_EQ(TextAt(Kind::Gate), "\r\nRADIUS: 60 ft");
}

TEST_F(Panel, TellsAPilotsFlightPlan)
{
    EXPECT_EQ(TextAt(Kind::Pilot), "PLAYER: N123\r\nHEADING: 93 *\r\nGROUND SPEED: 120 kts\r\nALTITUDE: 4500 ft\r\n"
                                   "TYPE PLANE: Jet Plane\r\nFLIGHT TYPE: VFR\r\nDEPARTURE AIRPORT: \r\n"
                                   "DESTINATION AIRPORT: \r\nCRUISE ALTITUDE: 9000 ft\r\nMINIMUM ALTITUDE: -None-");
    players[0].MagHeading = 92.5;
    players[0].FlightRules = 2; // anything but 0
    players[0].DepartureIcao = "LSZH";
    players[0].DestinationIcao = "EDDM";
    players[0].MinimumAltitudeFt = 5200;
    EXPECT_EQ(TextAt(Kind::Pilot),
              "PLAYER: N123\r\nHEADING: 92.5 *\r\nGROUND SPEED: 120 kts\r\nALTITUDE: 4500 ft\r\n"
              "TYPE PLANE: Jet Plane\r\nFLIGHT TYPE: IFR\r\nDEPARTURE AIRPORT: LSZH\r\n"
              "DESTINATION AIRPORT: EDDM\r\nCRUISE ALTITUDE: 9000 ft\r\nMINIMUM ALTITUDE: 5200 ft");
}

struct Offset2 {
    int Dx;
    int Dy;
    bool WithinNavaid;
    bool WithinObject;
};
TEST_F(Panel, ReachesFivePixelsForNavaidsAndSevenForTheRest)
{
    constexpr Offset2 Offsets[] = {
        {0, 0, true, true},   {5, 0, true, true},    {0, -5, true, true}, {5, 2, true, true},  // 5.39 pixels
        {4, 4, false, true},                                                                   // 5.66
        {6, 0, false, true},  {-7, 0, false, true},  {0, 7, false, true}, {7, 2, false, true}, // 7.28
        {5, 5, false, true},  {7, 3, false, false},                                            // 7.62
        {8, 0, false, false}, {0, -8, false, false}, {6, 5, false, false}};
    view.ZoomLevel = 35;
    for (const Offset2& o : Offsets) {
        for (const Kind kind : {Kind::Ndb, Kind::Vor})
            EXPECT_EQ(!TextAt(kind, o.Dx, o.Dy).empty(), o.WithinNavaid) << o.Dx << " " << o.Dy;
        for (const Kind kind : {Kind::Pilot, Kind::Gate, Kind::RunwayEnd1, Kind::RunwayEnd2, Kind::Ils})
            EXPECT_EQ(!TextAt(kind, o.Dx, o.Dy).empty(), o.WithinObject) << o.Dx << " " << o.Dy;
    }
    view.ZoomLevel = 34;
    for (const Offset2& o : Offsets)
        for (const Kind kind : {Kind::Sector, Kind::Tracon, Kind::ClassB})
            EXPECT_EQ(!TextAt(kind, o.Dx, o.Dy).empty(), o.WithinObject) << o.Dx << " " << o.Dy;
}

struct Visibility {
    Kind Object;
    std::int16_t LowestZoom;
    std::int16_t HighestZoom;
    bool DisplayFlags::*Flag; // that hides it, or null
};
TEST_F(Panel, AsksForTheZoomLevelAndTheDisplayFlag)
{
    constexpr Visibility Rows[] = {{Kind::Sector, 5, 34, &DisplayFlags::ShowAirspaces},
                                   {Kind::Tracon, 5, 34, &DisplayFlags::ShowAirspaces},
                                   {Kind::Tracon, 5, 34, &DisplayFlags::ShowTracon},
                                   {Kind::ClassB, 5, 34, &DisplayFlags::ShowAirspaces},
                                   {Kind::Ndb, 25, 55, &DisplayFlags::ShowNdbs},
                                   {Kind::Vor, 25, 55, &DisplayFlags::ShowVors},
                                   {Kind::Pilot, 1, 55, nullptr},
                                   {Kind::Gate, 35, 55, &DisplayFlags::ShowGates},
                                   {Kind::RunwayEnd1, 30, 55, &DisplayFlags::ShowRunways},
                                   {Kind::RunwayEnd2, 30, 55, &DisplayFlags::ShowRunways},
                                   {Kind::Ils, 30, 55, &DisplayFlags::ShowIls}};
    for (const Visibility& row : Rows) {
        for (std::int16_t zoom = 1; zoom <= 55; ++zoom) {
            view.ZoomLevel = zoom;
            EXPECT_EQ(!TextAt(row.Object).empty(), zoom >= row.LowestZoom && zoom <= row.HighestZoom)
                << static_cast<int>(row.Object) << " at " << zoom;
        }
        if (row.Flag == nullptr)
            continue;
        view.ZoomLevel = row.HighestZoom;
        flags.*row.Flag = false;
        EXPECT_EQ(TextAt(row.Object), "") << static_cast<int>(row.Object);
        flags = DisplayFlags();
    }
}

TEST_F(Panel, OtherFlagsHideNothingOfIt)
{
    for (const DisplayFlagName& flag : DisplayFlagNames)
        flags.*flag.Flag = false;
    flags.ShowAirspaces = true; // TRACONs need a flag of their own, sectors do not
    EXPECT_NE(TextAt(Kind::Sector), "");
    EXPECT_EQ(TextAt(Kind::Tracon), "");
    EXPECT_NE(TextAt(Kind::Pilot), "");
}

TEST_F(Panel, SelectsTheAirspaceUnderThePointer)
{
    const PanelAnswer answer = TickAt(PlaceOf(Kind::ClassC), 7);
    EXPECT_EQ(answer.Text, ""); // a kind without words
    ASSERT_TRUE(answer.SelectedAirspace);
    EXPECT_EQ(answer.SelectedAirspace->Name, "Current Selected Airspace");
    EXPECT_EQ(answer.SelectedAirspace->Kind, ClassCKind);
    EXPECT_EQ(answer.SelectedAirspace->Lat, PlaceOf(Kind::ClassC).Lat);
    EXPECT_EQ(answer.SelectedAirspace->Lon, PlaceOf(Kind::ClassC).Lon);

    EXPECT_FALSE(TickAt(PlaceOf(Kind::ClassC), 8).SelectedAirspace);
    EXPECT_FALSE(TickAt(PlaceOf(Kind::LowSector)).SelectedAirspace);
    flags.ShowTracon = false;
    EXPECT_FALSE(TickAt(PlaceOf(Kind::Tracon)).SelectedAirspace);
    view.ZoomLevel = 35;
    EXPECT_FALSE(TickAt(PlaceOf(Kind::Sector)).SelectedAirspace);
}

TEST_F(Panel, LaterAirspacesWinEvenWithoutWords)
{
    const LatLon at = PlaceOf(Kind::Sector);
    area.AreaAirspaces.push_back(Airspace(ClassBKind, at.Lat, at.Lon + 0.05));
    EXPECT_EQ(TickAt(at).Text.substr(0, 31), "AIRSPACE TYPE: Airspace Class B");
    EXPECT_EQ(TickAt(at).SelectedAirspace->Lon, at.Lon + 0.05);
    area.AreaAirspaces.push_back(Airspace(ClassCKind, at.Lat, at.Lon));
    EXPECT_EQ(TickAt(at).Text, "");
    EXPECT_EQ(TickAt(at).SelectedAirspace->Kind, ClassCKind);
    area.AreaAirspaces.push_back(Airspace(LowSectorKind, at.Lat, at.Lon)); // not asked for
    EXPECT_EQ(TickAt(at).SelectedAirspace->Kind, ClassCKind);
}

/// Puts objects of all kinds on one pixel and takes the winner away, one after the other.
TEST_F(Panel, TheLastKindInTheOrderWins)
{
    const LatLon at{5, 5};
    const auto startsWith = [&](const char* text) { return TickAt(at).Text.rfind(text, 0) == 0; };
    view.ZoomLevel = 34; // the gates come in at 35, where the airspaces are gone
    area.AreaAirspaces = {Airspace(HighSectorKind, at.Lat, at.Lon)};
    area.AreaNdbs = {Navaid("First", at.Lat, at.Lon), Navaid("Second", at.Lat, at.Lon)};
    area.AreaVors = {Navaid("Third", at.Lat, at.Lon)};
    players = {::corvane::Pilot("N1", at.Lat, at.Lon), ::corvane::Pilot("N2", at.Lat, at.Lon)};
    AirportRecord airport;
    airport.Parkings = {{"Gate 1", at.Lat, at.Lon, 1}, {"Gate 2", at.Lat, at.Lon, 2}};
    airport.Runways = {Runway(at.Lat, at.Lon, at.Lat, at.Lon), Runway(at.Lat, at.Lon, 0, 0)};
    airport.Ils = {{"IAA", at.Lat, at.Lon, 1, "108"}, {"IBB", at.Lat, at.Lon, 2, "109"}};
    AirportRecord& shown = (area.AreaAirports = {airport}).front();

    EXPECT_TRUE(startsWith("ILS: IBB"));
    EXPECT_TRUE(TickAt(at).SelectedAirspace); // selected whatever the text tells
    shown.Ils.clear();
    EXPECT_TRUE(startsWith("RUNWAY: 9L"));
    shown.Runways.pop_back();
    EXPECT_TRUE(startsWith("RUNWAY: 27R")); // of one runway, the second end
    shown.Runways.clear();
    view.ZoomLevel = 35;
    EXPECT_TRUE(startsWith("GATE 2"));
    area.AreaAirports.push_back(airport); // a later airport's objects come after an earlier one's
    area.AreaAirports[1].Ils.clear();
    area.AreaAirports[0].Ils = airport.Ils;
    EXPECT_TRUE(startsWith("RUNWAY: 9L"));
    area.AreaAirports.clear();
    EXPECT_TRUE(startsWith("PLAYER: N2"));
    players[1].Role = ObserverRole;
    EXPECT_TRUE(startsWith("PLAYER: N1"));
    players[0].PlayerId = OwnId;
    EXPECT_TRUE(startsWith("VOR FULLNAME: Third"));
    area.AreaVors.clear();
    EXPECT_TRUE(startsWith("NDB FULLNAME: Second"));
    area.AreaNdbs.clear();
    view.ZoomLevel = 34;
    EXPECT_TRUE(startsWith("AIRSPACE FULLNAME: "));
}

TEST_F(Panel, LeavesOutWhatIsNotOnTheScope)
{
    const auto playerAt = [&](double lat, double lon) {
        players = {::corvane::Pilot("N1", lat, lon)};
        return !TickAt({lat, lon}).Text.empty();
    };
    EXPECT_FALSE(playerAt(5, 0));
    EXPECT_TRUE(playerAt(5, 0.01));
    EXPECT_TRUE(playerAt(5, 9.99));
    EXPECT_FALSE(playerAt(5, 10));
    EXPECT_FALSE(playerAt(10, 5));
    EXPECT_TRUE(playerAt(9.99, 5));
    EXPECT_TRUE(playerAt(0.01, 5));
    EXPECT_FALSE(playerAt(0, 5));
}

TEST_F(Panel, StaysAsItIsWhileShownOrMeasuring)
{
    MovePointer(pointer, {static_cast<float>(PlaceOf(Kind::Sector).Lon), 5});
    pointer.MeasureActive = true;
    EXPECT_EQ(Tick().Text, "");
    EXPECT_FALSE(Tick().SelectedAirspace);
    pointer.MeasureActive = false;
    ShowPanel(pointer, Tick());
    EXPECT_EQ(pointer.PanelText.substr(0, 17), "AIRSPACE FULLNAME");
    EXPECT_EQ(pointer.SelectedAirspace.Kind, HighSectorKind);
    EXPECT_EQ(Tick().Text, ""); // frozen until the pointer moves
    EXPECT_FALSE(Tick().SelectedAirspace);
    ShowPanel(pointer, Tick());
    EXPECT_NE(pointer.PanelText, "");
}

TEST_F(Panel, FindsNothingInDamagedDataAndEmptyScopes)
{
    constexpr double Nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double Infinity = std::numeric_limits<double>::infinity();
    view.ZoomLevel = 30;
    for (const LatLon at : {LatLon{Nan, 5}, LatLon{5, Nan}, LatLon{Infinity, 5}, LatLon{5, -Infinity}}) {
        area.AreaNdbs = {Navaid("Damaged", at.Lat, at.Lon)};
        EXPECT_EQ(TickAt(at).Text, "");
        EXPECT_EQ(TickAt({5, 0}).Text, "");
    }
    view.ViewNorth = 100;
    area.AreaNdbs = {Navaid("BeyondThePole", 95, 5)};
    EXPECT_EQ(TickAt({95, 5}).Text, "");
    view = ScopeView();
    EXPECT_EQ(TickAt({0, 0}).Text, "");
    view.ScopeWidthPx = 100;
    view.ScopeHeightPx = 100;
    EXPECT_EQ(TickAt({0, 0}).Text, ""); // equal edges: all project to the corner
    area = AreaModel();
    players.clear();
    EXPECT_EQ(TickAt({5, 5}).Text, "");
}

TEST_F(Panel, WorksAcrossTheDateLine)
{
    view.ViewWest = 175;
    view.ViewEast = -175;
    view.ViewCenter.Lon = 180;
    players = {::corvane::Pilot("N1", 5, -178)};
    EXPECT_EQ(TickAt({5, 182}).Text.substr(0, 10), "PLAYER: N1");
}
} // namespace
} // namespace corvane
