#include "demo/SceneryRecords.h"

#include "core/BglTags.h"
#include "core/LatLon.h"
#include "demo/SceneryUnits.h"

namespace corvane {
static constexpr std::int32_t AirportContent = 1; // of a wrapper at the head of an airport

ChainRecord::ChainRecord(Bytes& out, std::int32_t tag) : m_out(out), m_start(out.size())
{
    ByteWriter writer(out);
    writer.WriteI32(tag);
    writer.WriteI32(0);
}

ChainRecord::~ChainRecord()
{
    constexpr std::size_t RecordHead = 8;
    ByteWriter(m_out).PatchI32(m_start + 4, static_cast<std::int32_t>(m_out.size() - m_start - RecordHead));
}

void AppendChainEnd(Bytes& out)
{
    ByteWriter(out).WriteZeros(8);
}

void AppendFixedText(Bytes& out, const std::string& text, std::size_t length)
{
    const std::string_view stored = std::string_view(text).substr(0, length);
    ByteWriter writer(out);
    writer.WriteText(stored);
    writer.WriteZeros(length - stored.size());
}

void AppendPaddedText(Bytes& out, const std::string& text)
{
    AppendFixedText(out, text, (text.size() + 3) / 4 * 4);
}

/// Two 64-bit coordinates and a 64-bit height in metres, of which readers take the whole parts: the upper halves.
static void AppendPosition(ByteWriter& writer, LatLon at)
{
    writer.WriteI32(0);
    writer.WriteI32(LatitudeWord(at.Lat));
    writer.WriteI32(0);
    writer.WriteI32(LongitudeWord(at.Lon));
}

static void AppendHeight(ByteWriter& writer, int feet)
{
    writer.WriteI32(0);
    writer.WriteI32(MetresFromFeet(feet));
}

static void AppendReference(Bytes& out, const SceneryAirport& airport)
{
    const ChainRecord record(out, BglTag::Reference);
    ByteWriter writer(out);
    AppendPosition(writer, {airport.Lat, airport.Lon});
    AppendHeight(writer, airport.ElevationFt);
}

static void AppendName(Bytes& out, const std::string& name)
{
    const ChainRecord record(out, BglTag::Name);
    AppendPaddedText(out, name);
}

static void AppendCom(Bytes& out, std::int32_t frequencyKhz, std::int32_t kind, const std::string& name)
{
    const ChainRecord record(out, BglTag::Com);
    ByteWriter writer(out);
    writer.WriteI32(FrequencyWord(frequencyKhz));
    writer.WriteI32(kind);
    AppendPaddedText(out, name);
}

static std::int32_t SideCode(char side)
{
    switch (side) {
    case 'L': return 1;
    case 'R': return 2;
    case 'C': return 3;
    default: return 0;
    }
}

static void AppendIls(Bytes& out, const SceneryIls& ils, std::int32_t runwayHeading)
{
    constexpr std::int32_t IlsKind = 4; // other kinds of this record are the rest of the runway's equipment
    const ChainRecord record(out, BglTag::Ils);
    ByteWriter writer(out);
    AppendPosition(writer, {ils.Lat, ils.Lon});
    AppendHeight(writer, ils.ElevationFt);
    const std::int32_t course = ils.FarEnd ? OppositeHeadingWord(runwayHeading) : runwayHeading;
    writer.WriteI32(TurnedHeadingWord(course, ils.CourseOffset));
    writer.WriteI32(FrequencyWord(ils.FrequencyKhz));
    writer.WriteI32(IlsKind);
    writer.WriteZeros(12);
    AppendPaddedText(out, ils.Ident);
}

static void AppendRunway(Bytes& out, const SceneryRunway& runway)
{
    const std::int32_t heading = HeadingWord(runway.TrueHeading);
    {
        const ChainRecord record(out, BglTag::Runway);
        ByteWriter writer(out);
        AppendPosition(writer, {runway.Lat, runway.Lon});
        AppendHeight(writer, runway.ElevationFt);
        writer.WriteI32(heading);
        writer.WriteI32(0);
        writer.WriteI32(runway.LengthFt);
        writer.WriteI32(runway.WidthFt);
        writer.WriteI32(SideCode(runway.Side));
        writer.WriteI32(runway.Number);
    }
    for (const SceneryIls& ils : runway.Ils)
        AppendIls(out, ils, heading);
}

Bytes AirportData(const SceneryAirport& airport)
{
    Bytes data;
    {
        const ChainRecord head(data, BglTag::Wrapper);
        ByteWriter writer(data);
        writer.WriteI32(AirportContent);
        writer.WriteI32(0);
        AppendReference(data, airport);
        AppendName(data, airport.Icao);
        for (const SceneryCom& com : airport.Coms)
            AppendCom(data, com.FrequencyKhz, static_cast<std::int32_t>(com.Kind), com.Name);
        for (const SceneryRunway& runway : airport.Runways)
            AppendRunway(data, runway);
        if (!airport.Ground.Points.empty()) // after the runways, whose designations its runway paths take
            AppendGroundLayout(data, airport.Ground);
        AppendChainEnd(data);
    }
    return data;
}

static void AppendListHead(ByteWriter& writer, std::size_t count, std::int32_t elementSize)
{
    writer.WriteI32(static_cast<std::int32_t>(count));
    writer.WriteI32(elementSize);
}

static void AppendParking(ByteWriter& writer, const GroundParking& parking)
{
    constexpr std::int32_t WordsPerNumber = 128;
    writer.WriteF32(static_cast<float>(parking.East));
    writer.WriteF32(static_cast<float>(parking.North));
    writer.WriteF32(static_cast<float>(parking.RadiusM));
    writer.WriteI32(0);
    writer.WriteI32(parking.Number * WordsPerNumber + static_cast<std::int32_t>(parking.Word));
}

static void AppendPath(ByteWriter& writer, const GroundPath& path)
{
    writer.WriteI32(static_cast<std::int32_t>(path.Kind));
    writer.WriteZeros(8);
    writer.WriteI32(path.Start);
    writer.WriteI32(path.End);
    writer.WriteZeros(8);
    writer.WriteI32(path.Name);
}

void AppendGroundLayout(Bytes& out, const GroundLayout& ground)
{
    const ChainRecord record(out, BglTag::GroundLayout);
    ByteWriter writer(out);
    AppendListHead(writer, ground.Points.size(), 12);
    for (const GroundPoint& point : ground.Points) {
        writer.WriteI32(static_cast<std::int32_t>(point.Kind));
        writer.WriteF32(static_cast<float>(point.East));
        writer.WriteF32(static_cast<float>(point.North));
    }
    AppendListHead(writer, ground.Parkings.size(), 20);
    for (const GroundParking& parking : ground.Parkings)
        AppendParking(writer, parking);
    AppendListHead(writer, ground.Paths.size(), 32);
    for (const GroundPath& path : ground.Paths)
        AppendPath(writer, path);
    AppendListHead(writer, ground.Names.size(), 8);
    for (const std::string& name : ground.Names)
        AppendFixedText(out, name, 8);
}

static void AppendVertex(Bytes& out, std::int32_t tag, const BoundaryPoint& point)
{
    const ChainRecord record(out, tag);
    ByteWriter writer(out);
    AppendPosition(writer, {point.Lat, point.Lon});
}

static void AppendStart(Bytes& out, const SceneryBoundary& boundary, const BoundaryPoint& point)
{
    const ChainRecord record(out, BglTag::Start);
    ByteWriter writer(out);
    AppendPosition(writer, {point.Lat, point.Lon});
    writer.WriteI32(boundary.Floor);
    writer.WriteI32(boundary.Ceiling);
}

static void AppendCircle(Bytes& out, const SceneryBoundary& boundary, const BoundaryPoint& point)
{
    const ChainRecord record(out, BglTag::Circle);
    ByteWriter writer(out);
    writer.WriteI32(point.Radius);
    writer.WriteI32(0);
    writer.WriteI32(boundary.Floor);
    writer.WriteI32(boundary.Ceiling);
}

static void AppendBoundaryPoint(Bytes& out, const SceneryBoundary& boundary, const BoundaryPoint& point)
{
    switch (point.Kind) {
    case BoundaryKind::Start: AppendStart(out, boundary, point); break;
    case BoundaryKind::ArcCenter: AppendVertex(out, BglTag::ArcCenter, point); break;
    case BoundaryKind::Circle: AppendCircle(out, boundary, point); break;
    case BoundaryKind::ClockwiseArc: AppendVertex(out, BglTag::ClockwiseArc, point); break;
    case BoundaryKind::CounterClockwiseArc: AppendVertex(out, BglTag::CounterClockwiseArc, point); break;
    case BoundaryKind::Line: AppendVertex(out, BglTag::Line, point); break;
    }
}

static void AppendBoundingBox(Bytes& out, const SceneryBoundary& boundary)
{
    const ChainRecord record(out, BglTag::BoundingBox);
    ByteWriter writer(out);
    writer.WriteI32(LatitudeWord(boundary.South));
    writer.WriteI32(LongitudeWord(boundary.West));
    writer.WriteI32(LatitudeWord(boundary.North));
    writer.WriteI32(LongitudeWord(boundary.East));
}

void AppendBoundary(Bytes& out, const SceneryBoundary& boundary)
{
    constexpr std::int32_t CenterService = 10; // not read for boundaries
    const ChainRecord record(out, BglTag::Wrapper);
    ByteWriter writer(out);
    writer.WriteI32(BglTag::Boundary);
    writer.WriteI32(0);
    AppendName(out, boundary.Name);
    AppendBoundingBox(out, boundary);
    if (!boundary.Facility.empty())
        AppendCom(out, boundary.FrequencyKhz, CenterService, boundary.Facility);
    for (const BoundaryPoint& point : boundary.Points)
        AppendBoundaryPoint(out, boundary, point);
    AppendChainEnd(out);
}
} // namespace corvane
