#include "radar/PanelText.h"

#include "core/NumberText.h"
#include "core/Text.h"

#include <algorithm>
#include <concepts>
#include <utility>

namespace corvane {
static void AppendPart(std::string& text, std::string_view part)
{
    text += part;
}
static void AppendPart(std::string& text, double number)
{
    AppendNumber(text, number);
}
static void AppendPart(std::string& text, std::integral auto number)
{
    AppendNumber(text, number);
}

namespace {
class Lines {
public:
    template <class... Parts> Lines& Add(const Parts&... parts)
    {
        if (!m_first)
            m_text += "\r\n";
        m_first = false;
        (AppendPart(m_text, parts), ...);
        return *this;
    }
    std::string Take() noexcept { return std::move(m_text); }

private:
    std::string m_text;
    bool m_first = true;
};
} // namespace

static void AddFacility(Lines& lines, const AirspaceRecord& airspace)
{
    lines.Add("AIRSPACE FULLNAME: ", airspace.ComName);
    lines.Add("AIRSPACE TYPE: ", airspace.Kind);
    lines.Add("FREQUENCY: ", airspace.Frequency);
}

static void AddAltitudes(Lines& lines, const AirspaceRecord& airspace)
{
    lines.Add("FROM ALTITUDE: ", std::min(airspace.Floor, airspace.Ceiling), " ft");
    lines.Add("TO ALTITUDE: ", std::max(airspace.Floor, airspace.Ceiling), " ft");
}

std::string AirspaceText(const AirspaceRecord& airspace)
{
    Lines lines;
    if (airspace.Kind == HighSectorKind) {
        AddFacility(lines, airspace);
    } else if (airspace.Kind == TraconKind) {
        AddFacility(lines, airspace);
        AddAltitudes(lines, airspace);
    } else if (airspace.Kind == ClassBKind) {
        lines.Add("AIRSPACE TYPE: ", airspace.Kind);
        AddAltitudes(lines, airspace);
    }
    return lines.Take();
}

std::string NavaidText(std::string_view kind, const NavaidRecord& navaid)
{
    return Lines()
        .Add(kind, " FULLNAME: ", navaid.Name)
        .Add(kind, " ID: ", navaid.Ident)
        .Add(kind, " FREQUENCY: ", navaid.Frequency, " Mhz")
        .Add(kind, " RANGE: ", navaid.RangeNm, " miles")
        .Take();
}

std::string PilotText(const PlayerRecord& pilot)
{
    Lines lines;
    lines.Add("PLAYER: ", pilot.Name)
        .Add("HEADING: ", pilot.MagHeading, " *")
        .Add("GROUND SPEED: ", pilot.GroundSpeedKt, " kts")
        .Add("ALTITUDE: ", pilot.AltitudeFt, " ft")
        .Add("TYPE PLANE: ", pilot.AircraftType)
        .Add("FLIGHT TYPE: ", pilot.FlightRules == 0 ? "VFR" : "IFR")
        .Add("DEPARTURE AIRPORT: ", pilot.DepartureIcao)
        .Add("DESTINATION AIRPORT: ", pilot.DestinationIcao)
        .Add("CRUISE ALTITUDE: ", pilot.CruiseAltitude, " ft");
    if (pilot.MinimumAltitudeFt != 0)
        lines.Add("MINIMUM ALTITUDE: ", pilot.MinimumAltitudeFt, " ft");
    else
        lines.Add("MINIMUM ALTITUDE: ", "-None-");
    return lines.Take();
}

std::string ParkingText(const ParkingRecord& parking)
{
    return Lines().Add(ToUpper(parking.Name)).Add("RADIUS: ", parking.RadiusFt, " ft").Take();
}

std::string RunwayText(const RunwayRecord& runway, std::string_view designation, std::int16_t magHeading)
{
    return Lines()
        .Add("RUNWAY: ", designation)
        .Add("HEADING: ", magHeading)
        .Add("ALTITUDE: ", runway.ElevationFt, " ft")
        .Add("LENGHT: ", runway.LengthFt, " ft") // the program's own spelling
        .Add("WIDTH: ", runway.WidthFt, " ft")
        .Take();
}

std::string IlsText(const IlsRecord& ils)
{
    return Lines()
        .Add("ILS: ", ils.Ident)
        .Add("HEADING: ", ils.MagHeading)
        .Add("FREQUENCY: ", ils.Frequency, " Mhz")
        .Take();
}
} // namespace corvane
