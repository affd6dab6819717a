#include "builder/AirspaceDecoder.h"

#include "core/BglTags.h"
#include "core/Frequency.h"
#include "core/Geodesy.h"
#include "core/Rounding.h"

#include <algorithm>
#include <string_view>

namespace corvane {
namespace {
constexpr std::int32_t SkippedRecord = 0x12003;

enum class Walk { GoOn, End, Error };
} // namespace

const char* AirspaceKind(const AirspaceRecord& airspace) noexcept
{
    constexpr std::int32_t HighestClassC = 4000;
    constexpr std::int32_t HighestClassD = 2500;
    if (!airspace.Frequency.empty() && !airspace.ComName.empty())
        return airspace.Floor < 0 && airspace.Ceiling < 0 ? HighSectorKind : LowSectorKind;
    const std::int32_t highest = std::max(airspace.Floor, airspace.Ceiling);
    if (highest <= HighestClassD)
        return ClassDKind;
    return highest <= HighestClassC ? ClassCKind : ClassBKind;
}

static double BoundaryLatitude(std::int32_t value) noexcept
{
    return RoundToFourPlaces(ChainLatitude(value));
}

static double BoundaryLongitude(std::int32_t value) noexcept
{
    return RoundToFourPlaces(ChainLongitude(value));
}

static void AddVertex(BglReader& reader, std::int64_t r, BoundaryKind kind, AirspaceRecord& airspace)
{
    airspace.Points.push_back(
        {kind, BoundaryLatitude(reader.ReadI32(r + 12)), BoundaryLongitude(reader.ReadI32(r + 20)), 0});
}

static void SetLimits(BglReader& reader, std::int64_t at, AirspaceRecord& airspace)
{
    airspace.Floor = reader.ReadI32(at);
    airspace.Ceiling = reader.ReadI32(at + 4);
}

void SetCenterOfBox(AirspaceRecord& airspace) noexcept
{
    const std::int16_t diagonal = DistanceNm({airspace.North, airspace.West}, {airspace.South, airspace.East});
    const std::int16_t course = TrueCourse({airspace.North, airspace.West}, {airspace.South, airspace.East});
    const auto half = RoundTo<std::int16_t>(diagonal / 2.0);
    const LatLon center = DestinationNm({airspace.North, airspace.West}, course, half);
    airspace.CenterLat = center.Lat;
    airspace.CenterLon = center.Lon;
}

static void SetBox(BglReader& reader, std::int64_t r, AirspaceRecord& airspace)
{
    airspace.South = BoundaryLatitude(reader.ReadI32(r + 8));
    airspace.West = BoundaryLongitude(reader.ReadI32(r + 12));
    airspace.North = BoundaryLatitude(reader.ReadI32(r + 16));
    airspace.East = BoundaryLongitude(reader.ReadI32(r + 20));
    SetCenterOfBox(airspace);
}

/// A later facility replaces an earlier one. False where the frequency is none.
static bool SetFacility(BglScan& scan, std::int64_t r, std::int64_t size, AirspaceRecord& airspace)
{
    const std::optional<std::string> frequency = BcdFrequency(scan.Reader.ReadI32(r + 8));
    if (!frequency)
        return false;
    airspace.Frequency = *frequency + " Mhz";
    airspace.ComName = scan.ReadText(r + 16, size - 8);
    return true;
}

/// Fields need no check for read errors: the boundary is abandoned when one has occurred.
static Walk DecodeBoundaryRecord(BglScan& scan, std::int64_t r, const BglRecordHead& head, AirspaceRecord& airspace)
{
    BglReader& reader = scan.Reader;
    switch (head.Tag) {
    case BglTag::ArcCenter: AddVertex(reader, r, BoundaryKind::ArcCenter, airspace); break;
    case BglTag::Start:
        AddVertex(reader, r, BoundaryKind::Start, airspace);
        SetLimits(reader, r + 24, airspace);
        break;
    case SkippedRecord: break;
    case BglTag::Line: AddVertex(reader, r, BoundaryKind::Line, airspace); break;
    case BglTag::ClockwiseArc: AddVertex(reader, r, BoundaryKind::ClockwiseArc, airspace); break;
    case BglTag::CounterClockwiseArc: AddVertex(reader, r, BoundaryKind::CounterClockwiseArc, airspace); break;
    case BglTag::Circle:
        airspace.Points.push_back({BoundaryKind::Circle, 0, 0, reader.ReadI32(r + 8)});
        SetLimits(reader, r + 16, airspace);
        break;
    case BglTag::Name: airspace.Name = scan.ReadText(r + 8, head.ContentSize); break;
    case BglTag::BoundingBox: SetBox(reader, r, airspace); break;
    case BglTag::Com:
        if (!SetFacility(scan, r, head.ContentSize, airspace))
            return Walk::Error;
        break;
    default: return Walk::End;
    }
    return Walk::GoOn;
}

/// Decodes the boundary whose record starts at q; nothing on an error.
static std::optional<AirspaceRecord> DecodeBoundary(BglScan& scan, std::int64_t q)
{
    constexpr std::int64_t BoundaryHead = 16;
    AirspaceRecord airspace;
    std::optional<std::int64_t> r = q + BoundaryHead;
    while (r) {
        const BglRecordHead head = ReadRecordHead(scan, *r);
        const Walk walk = DecodeBoundaryRecord(scan, *r, head, airspace);
        if (walk == Walk::Error || scan.Stopped())
            return std::nullopt;
        if (walk == Walk::End)
            break;
        r = head.Next(*r);
    }
    airspace.Kind = AirspaceKind(airspace);
    return airspace;
}

static bool Written(const AirspaceRecord& airspace)
{
    return airspace.Kind == HighSectorKind || airspace.Kind == LowSectorKind || airspace.Kind == ClassBKind;
}

void WalkBoundaryList(BglScan& scan, std::int64_t p)
{
    std::optional<std::int64_t> at = p;
    while (at) {
        scan.EnterPlace("the boundary list's record", *at);
        const BglRecordHead head = ReadRecordHead(scan, *at);
        if (scan.Stopped() || (head.Tag != BglTag::Wrapper && head.Tag != BglTag::Directory))
            return;
        const bool isBoundary = head.Tag == BglTag::Wrapper && scan.Reader.ReadI32(*at + 8) == BglTag::Boundary;
        if (scan.Stopped())
            return;
        if (isBoundary) {
            if (const auto airspace = DecodeBoundary(scan, *at); airspace && Written(*airspace))
                scan.Sink.AddAirspace(*airspace);
            scan.Absorb("the boundary", *at);
        }
        at = head.Next(*at);
    }
}
} // namespace corvane
