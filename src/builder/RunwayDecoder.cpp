#include "builder/RunwayDecoder.h"

#include "core/Frequency.h"
#include "core/Geodesy.h"
#include "core/NumberText.h"
#include "core/Rounding.h"

#include <cmath>

namespace corvane {
static constexpr double EarthCircumferenceM = 40007000; // along a meridian, as the scenery counts it

/// Degrees from a heading word: 65536 steps of 65536 units to the turn, signed, so 180 and beyond come out negative.
static double HeadingDegrees(std::int32_t word) noexcept
{
    return word / 65536.0 * 360.0 / 65536.0;
}

static double OnceAround(double lon) noexcept
{
    if (lon > 180)
        return lon - 360;
    return lon < -180 ? lon + 360 : lon;
}

/// Sets both thresholds from the centre, which is set; false where the arithmetic has no result.
static bool PlaceEnds(RunwayRecord& runway, double heading)
{
    constexpr double ThresholdsInsetM = 60; // both together, on runways long enough for them
    constexpr double LongM = 300;
    double length = runway.LengthFt * MetresPerFoot;
    if (length > LongM)
        length -= ThresholdsInsetM;
    const double dLat = 0.5 * length * std::cos(heading * RadiansPerDegree) * 360 / EarthCircumferenceM;
    const double dLon = 0.5 * length * std::sin(heading * RadiansPerDegree) * 360 /
                        (std::cos(runway.CenterLat * RadiansPerDegree) * EarthCircumferenceM);
    runway.End1Lat = runway.CenterLat - dLat;
    runway.End1Lon = OnceAround(runway.CenterLon - dLon);
    runway.End2Lat = runway.CenterLat + dLat;
    runway.End2Lon = OnceAround(runway.CenterLon + dLon);
    return std::isfinite(dLon);
}

static std::string_view SideLetter(std::int32_t side, bool reciprocal) noexcept
{
    switch (side) {
    case 1: return reciprocal ? "R" : "L";
    case 2: return reciprocal ? "L" : "R";
    case 3: return "C";
    case 4: return "H";
    default: return "";
    }
}

void RunwayDecoder::Designate(RunwayRecord& runway, std::int64_t number, std::int32_t side)
{
    constexpr std::int64_t Highest = 36;
    if (number <= Highest) {
        const std::int64_t opposite = number + 18 > Highest ? number + 18 - Highest : number + 18;
        m_designation = NumberText(number).append(SideLetter(side, false));
        m_reciprocalDesignation = NumberText(opposite).append(SideLetter(side, true));
    }
    runway.Designation = m_designation;
    runway.ReciprocalDesignation = m_reciprocalDesignation;
}

/// Nothing where the position lies outside the grid, which only a damaged record does.
static std::optional<std::int16_t> Magnetic(const MagVarGrid& grid, double heading, LatLon at) noexcept
{
    if (!grid.VariationAt(at))
        return std::nullopt;
    return MagneticFromTrue(grid, heading, at);
}

bool RunwayDecoder::DecodeRunway(std::int64_t r)
{
    BglReader& reader = m_scan.Reader;
    RunwayRecord runway;
    runway.CenterLat = ChainLatitude(reader.ReadI32(r + 12));
    runway.CenterLon = ChainLongitude(reader.ReadI32(r + 20));
    const auto elevation = RoundChecked<std::int32_t>(reader.ReadI32(r + 28) / MetresPerFoot);
    const std::int32_t headingWord = reader.ReadI32(r + 32);
    runway.LengthFt = reader.ReadI32(r + 40);
    runway.WidthFt = reader.ReadI32(r + 44);
    const std::int32_t side = reader.ReadI32(r + 48);
    const std::int32_t number = reader.ReadI32(r + 52);
    const double heading = HeadingDegrees(headingWord);
    const double reciprocal = (headingWord / 65536.0 + 32768) * 360.0 / 65536.0;
    if (reader.Failed() || !elevation || !PlaceEnds(runway, heading))
        return false;
    runway.ElevationFt = *elevation;
    m_heading = RoundHalfEven(heading);
    m_reciprocalHeading = RoundHalfEven(reciprocal);
    Designate(runway, number, side);
    const auto magnetic = Magnetic(m_scan.Grid, m_heading, {runway.End1Lat, runway.End1Lon});
    const auto reciprocalMagnetic = Magnetic(m_scan.Grid, m_reciprocalHeading, {runway.End2Lat, runway.End2Lon});
    if (!magnetic || !reciprocalMagnetic)
        return false;
    runway.MagHeading = *magnetic;
    runway.ReciprocalMagHeading = *reciprocalMagnetic;
    m_airport.Runways.push_back(std::move(runway));
    return true;
}

bool RunwayDecoder::DecodeIls(std::int64_t q, std::int64_t size)
{
    constexpr std::int32_t IlsKind = 4;
    BglReader& reader = m_scan.Reader;
    const std::int32_t kind = reader.ReadI32(q + 40);
    if (reader.Failed() || kind != IlsKind)
        return !reader.Failed();
    IlsRecord ils;
    ils.Lat = ChainLatitude(reader.ReadI32(q + 12));
    ils.Lon = ChainLongitude(reader.ReadI32(q + 20));
    const double heading = RoundHalfEven(HeadingDegrees(reader.ReadI32(q + 32)));
    std::optional<std::string> frequency = BcdFrequency(reader.ReadI32(q + 36));
    ils.Ident = m_scan.ReadText(q + 56, size - 48);
    const auto magnetic = Magnetic(m_scan.Grid, heading, {ils.Lat, ils.Lon});
    if (m_scan.Stopped() || !frequency || !magnetic)
        return false;
    ils.Frequency = *std::move(frequency);
    ils.MagHeading = *magnetic;
    const RunwayRecord& runway = m_airport.Runways.back();
    if (heading == m_heading) {
        ils.Lat = runway.End1Lat;
        ils.Lon = runway.End1Lon;
    } else if (heading == m_reciprocalHeading) {
        ils.Lat = runway.End2Lat;
        ils.Lon = runway.End2Lon;
    }
    m_airport.Ils.push_back(std::move(ils));
    return true;
}
} // namespace corvane
