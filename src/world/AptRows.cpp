#include "world/AptRows.h"

#include "core/Frequency.h"
#include "core/NumberText.h"
#include "core/Rounding.h"
#include "core/Text.h"
#include "world/Ellipsoid.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace corvane {
static constexpr double WidestM = 10000;
static constexpr double LongestM = 100000;
static constexpr std::int32_t GateRadiusFt = 59;
static constexpr std::int32_t StandRadiusFt = 39;

std::string RunwayNumber(std::string_view written)
{
    while (written.size() > 1 && written.front() == '0')
        written.remove_prefix(1);
    return ToUpper(written);
}

/// Sets the ends of a runway and its centre, with everything that follows from them.
static void PlaceRunway(RowReader& row, RunwayRecord& runway, const LatLon& end1, const LatLon& center,
                        const LatLon& end2, double widthM, const MagVarGrid& grid)
{
    const EllipsoidLine line = LineBetween(end1, end2);
    runway.End1Lat = end1.Lat;
    runway.End1Lon = end1.Lon;
    runway.End2Lat = end2.Lat;
    runway.End2Lon = end2.Lon;
    runway.CenterLat = center.Lat;
    runway.CenterLon = center.Lon;
    runway.LengthFt = RoundTo<std::int32_t>(line.LengthM / MetresPerFoot);
    runway.WidthFt = RoundTo<std::int32_t>(widthM / MetresPerFoot);
    runway.MagHeading = MagneticFromTrue(grid, line.Bearing, end1);
    runway.ReciprocalMagHeading = MagneticFromTrue(grid, line.ReciprocalBearing, end2);
    if (widthM < 0 || widthM >= WidestM)
        row.Refuse("the runway's width makes no sense");
    if (runway.LengthFt == 0)
        row.Refuse("the runway has no length");
    if (line.LengthM >= LongestM)
        row.Refuse("the runway is 100 km long or longer");
}

RunwayRecord ReadRunway(RowReader& row, bool onWater, std::int32_t elevationFt, const MagVarGrid& grid)
{
    constexpr int LandFieldsBeforeNumber = 6;  // surface, shoulder, smoothness, centre and edge lights, signs
    constexpr int WaterFieldsBeforeNumber = 1; // buoys
    constexpr int LandFieldsBetweenEnds = 6;   // displaced threshold, overrun, markings, three kinds of lights
    RunwayRecord runway;
    runway.ElevationFt = elevationFt;
    const double widthM = row.Number();
    row.Skip(onWater ? WaterFieldsBeforeNumber : LandFieldsBeforeNumber);
    runway.Designation = RunwayNumber(row.Text());
    const LatLon end1 = row.Position();
    row.Skip(onWater ? 0 : LandFieldsBetweenEnds);
    runway.ReciprocalDesignation = RunwayNumber(row.Text());
    const LatLon end2 = row.Position();
    if (row.Failed())
        return runway;
    PlaceRunway(row, runway, end1, MeanPlace(std::array{end1, end2}), end2, widthM, grid);
    return runway;
}

/// The other end's number: 18 more or less, right for left. Nothing where the number does not begin with 0 to 36.
static std::optional<std::string> ReciprocalNumber(std::string_view number)
{
    constexpr int HalfTurn = 18;
    constexpr int FullTurn = 36;
    int value = 0;
    const auto [rest, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error != std::errc() || value < 0 || value > FullTurn)
        return std::nullopt;
    std::string reciprocal = NumberText(value > HalfTurn ? value - HalfTurn : value + HalfTurn);
    for (const char* side = rest; side != number.data() + number.size(); ++side)
        reciprocal += *side == 'L' ? 'R' : *side == 'R' ? 'L' : *side;
    return reciprocal;
}

/// A strip's number: letters x stand for characters that it does not have.
static std::string StripNumber(std::string_view written)
{
    while (!written.empty() && (written.back() == 'x' || written.back() == 'X'))
        written.remove_suffix(1);
    return RunwayNumber(written);
}

StripRow ReadStrip(RowReader& row, std::int32_t elevationFt, const MagVarGrid& grid)
{
    constexpr int FieldsBeforeWidth = 2; // displaced thresholds, overruns
    StripRow strip;
    const LatLon center = row.Position();
    const std::string number = StripNumber(row.Text());
    const double heading = row.NumberWithin(-360, 720, "a heading");
    const double lengthM = row.NumberWithin(0, LongestM / MetresPerFoot, "a length in feet") * MetresPerFoot;
    strip.IsTaxiway = number.empty();
    strip.Start = PlaceAlong(center, heading, -lengthM / 2);
    strip.End = PlaceAlong(center, heading, lengthM / 2);
    if (row.Failed() || strip.IsTaxiway)
        return strip;
    row.Skip(FieldsBeforeWidth);
    const double widthM = row.Number() * MetresPerFoot;
    const std::optional<std::string> reciprocal = ReciprocalNumber(number);
    if (!reciprocal)
        row.Refuse("the runway's number makes no sense");
    if (row.Failed())
        return strip;
    RunwayRecord& runway = strip.Runway;
    runway.ElevationFt = elevationFt;
    runway.Designation = number;
    runway.ReciprocalDesignation = *reciprocal;
    PlaceRunway(row, runway, strip.Start, center, strip.End, widthM, grid);
    return strip;
}

ParkingRecord ReadHelipad(RowReader& row)
{
    ParkingRecord parking;
    parking.Name = "HELIPAD " + row.Text();
    const LatLon position = row.Position();
    row.Skip(1); // heading
    const double lengthM = row.NumberWithin(0, WidestM, "a length in metres");
    const double widthM = row.NumberWithin(0, WidestM, "a width in metres");
    parking.Lat = position.Lat;
    parking.Lon = position.Lon;
    parking.RadiusFt = RoundTo<std::int32_t>(std::max(lengthM, widthM) / 2 / MetresPerFoot);
    return parking;
}

ParkingRecord ReadParking(RowReader& row, bool hasType)
{
    ParkingRecord parking;
    const LatLon position = row.Position();
    parking.Lat = position.Lat;
    parking.Lon = position.Lon;
    parking.RadiusFt = StandRadiusFt;
    if (row.HasMore())
        row.Skip(1); // heading
    if (hasType && row.HasMore() && row.Field() == "gate")
        parking.RadiusFt = GateRadiusFt;
    if (hasType && row.HasMore())
        row.Skip(1); // aircraft
    parking.Name = row.Rest();
    return parking;
}

std::int32_t ReadParkingRadiusFt(RowReader& row)
{
    // Half the upper limits of the ICAO aerodrome reference code's wing spans A to F: 15, 24, 36, 52, 65, 80 m.
    constexpr std::array<std::int32_t, 6> RadiiFt = {25, 39, 59, 85, 107, 131};
    const std::string letter = ToUpper(row.Field());
    if (letter.size() == 1 && letter[0] >= 'A' && letter[0] <= 'F')
        return RadiiFt[static_cast<std::size_t>(letter[0] - 'A')];
    row.Refuse("the width class is none of A to F");
    return 0;
}

std::string ReadFrequency(RowReader& row, bool inKilohertz)
{
    constexpr std::int64_t Highest = 9999990; // ten-thousandths of a megahertz
    const std::int64_t written = row.Whole();
    if (row.Failed() || written <= 0 || written > Highest)
        return {};
    std::int64_t value = written * 10;
    if (!inKilohertz) {
        constexpr std::int64_t CutOff = 50; // 5 kHz that two decimals do not show
        value = written * 100 + (written % 10 == 2 || written % 10 == 7 ? CutOff : 0);
    }
    return value > Highest ? std::string() : TenThousandthsText(value);
}
} // namespace corvane
