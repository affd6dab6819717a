#include "core/RecordCodec.h"

#include "core/NumberText.h"

#include <limits>
#include <string>

namespace corvane {
namespace {
/// How a list is stored: exactly its elements, or with one blank element behind them.
enum class Spare { None, Blank };
} // namespace

static void Encode(ByteWriter& out, const RunwayRecord& runway)
{
    out.WriteText16(runway.Designation);
    out.WriteText16(runway.ReciprocalDesignation);
    for (const double degrees :
         {runway.CenterLat, runway.CenterLon, runway.End1Lat, runway.End1Lon, runway.End2Lat, runway.End2Lon})
        out.WriteF64(degrees);
    out.WriteI32(runway.ElevationFt);
    out.WriteI16(runway.MagHeading);
    out.WriteI16(runway.ReciprocalMagHeading);
    out.WriteI32(runway.LengthFt);
    out.WriteI32(runway.WidthFt);
}

static void Decode(ByteReader& in, RunwayRecord& runway)
{
    runway.Designation = in.ReadText16();
    runway.ReciprocalDesignation = in.ReadText16();
    for (double* degrees :
         {&runway.CenterLat, &runway.CenterLon, &runway.End1Lat, &runway.End1Lon, &runway.End2Lat, &runway.End2Lon})
        *degrees = in.ReadF64();
    runway.ElevationFt = in.ReadI32();
    runway.MagHeading = in.ReadI16();
    runway.ReciprocalMagHeading = in.ReadI16();
    runway.LengthFt = in.ReadI32();
    runway.WidthFt = in.ReadI32();
}

static void Encode(ByteWriter& out, const IlsRecord& ils)
{
    out.WriteText16(ils.Ident);
    out.WriteF64(ils.Lat);
    out.WriteF64(ils.Lon);
    out.WriteI16(ils.MagHeading);
    out.WriteText16(ils.Frequency);
}

static void Decode(ByteReader& in, IlsRecord& ils)
{
    ils.Ident = in.ReadText16();
    ils.Lat = in.ReadF64();
    ils.Lon = in.ReadF64();
    ils.MagHeading = in.ReadI16();
    ils.Frequency = in.ReadText16();
}

static void Encode(ByteWriter& out, const TaxiPoint& point)
{
    out.WriteI32(point.Kind);
    out.WriteF64(point.Lat);
    out.WriteF64(point.Lon);
}

static void Decode(ByteReader& in, TaxiPoint& point)
{
    point.Kind = in.ReadI32();
    point.Lat = in.ReadF64();
    point.Lon = in.ReadF64();
}

static void Encode(ByteWriter& out, const ParkingRecord& parking)
{
    out.WriteText16(parking.Name);
    out.WriteF64(parking.Lat);
    out.WriteF64(parking.Lon);
    out.WriteI32(parking.RadiusFt);
}

static void Decode(ByteReader& in, ParkingRecord& parking)
{
    parking.Name = in.ReadText16();
    parking.Lat = in.ReadF64();
    parking.Lon = in.ReadF64();
    parking.RadiusFt = in.ReadI32();
}

static void Encode(ByteWriter& out, const TaxiPath& path)
{
    out.WriteI32(path.Kind);
    out.WriteI32(path.StartPoint);
    out.WriteI32(path.EndPoint);
    out.WriteText16(path.Name);
}

static void Decode(ByteReader& in, TaxiPath& path)
{
    path.Kind = in.ReadI32();
    path.StartPoint = in.ReadI32();
    path.EndPoint = in.ReadI32();
    path.Name = in.ReadText16();
}

static void Encode(ByteWriter& out, const BoundaryPoint& point)
{
    out.WriteU8(static_cast<std::uint8_t>(point.Kind));
    out.WriteF64(point.Lat);
    out.WriteF64(point.Lon);
    out.WriteI32(point.Radius);
}

static void Decode(ByteReader& in, BoundaryPoint& point)
{
    point.Kind = static_cast<BoundaryKind>(in.ReadU8());
    point.Lat = in.ReadF64();
    point.Lon = in.ReadF64();
    point.Radius = in.ReadI32();
}

/// A list and the count that follows it: dimensions, element count, lower bound, elements; an empty list is never
/// sized, which is the dimension count 0 alone.
template <class T> static void EncodeList(ByteWriter& out, const std::vector<T>& list, Spare spare)
{
    if (list.empty()) {
        out.WriteU16(0);
    } else {
        out.WriteU16(1);
        out.WriteU32(static_cast<std::uint32_t>(list.size() + (spare == Spare::Blank ? 1 : 0)));
        out.WriteI32(0);
        for (const T& element : list)
            Encode(out, element);
        if (spare == Spare::Blank)
            Encode(out, T{});
    }
    out.WriteI32(static_cast<std::int32_t>(list.size()));
}

/// Bytes of an element whose texts are empty: no file of n bytes holds more than n / SmallestSize elements.
template <class T> constexpr std::size_t SmallestSize = 0;
template <> constexpr std::size_t SmallestSize<RunwayRecord> = 2 * 2 + 6 * 8 + 3 * 4 + 2 * 2;
template <> constexpr std::size_t SmallestSize<IlsRecord> = 2 * 2 + 2 * 8 + 2;
template <> constexpr std::size_t SmallestSize<TaxiPoint> = 4 + 2 * 8;
template <> constexpr std::size_t SmallestSize<ParkingRecord> = 2 + 2 * 8 + 4;
template <> constexpr std::size_t SmallestSize<TaxiPath> = 3 * 4 + 2;
template <> constexpr std::size_t SmallestSize<BoundaryPoint> = 1 + 2 * 8 + 4;

/// Reads a list and its count, keeping the elements in use. Returns why it cannot be one, or an empty text.
template <class T> static std::string DecodeList(ByteReader& in, std::vector<T>& list, const char* name)
{
    std::uint32_t stored = 0;
    if (const std::uint16_t dimensions = in.ReadU16(); dimensions != 0) {
        stored = in.ReadU32();
        const std::int32_t lowerBound = in.ReadI32();
        if (dimensions != 1 || lowerBound != 0)
            return std::string(name) + " has " + NumberText(std::int64_t{dimensions}) + " dimensions from " +
                   NumberText(lowerBound);
        if (stored > in.Left() / SmallestSize<T>) {
            // The elements end beyond the bytes, and so does their count behind them, which then is 0.
            static_cast<void>(in.ReadBytes(in.Left() + 1));
            return {};
        }
        list.resize(stored);
        for (T& element : list)
            Decode(in, element);
    }
    const std::int32_t count = in.ReadI32();
    if (count < 0 || static_cast<std::uint32_t>(count) > stored)
        return std::string(name) + " uses " + NumberText(count) + " of " + NumberText(std::int64_t{stored}) +
               " elements";
    list.resize(static_cast<std::size_t>(count));
    return {};
}

static Error RecordError(std::string_view fileName, std::uint64_t start, const std::string& why)
{
    return Fail(std::string(fileName),
                "the record at byte " + NumberText(static_cast<std::int64_t>(start)) + " " + why);
}

void EncodeNavaid(Bytes& out, const NavaidRecord& record)
{
    ByteWriter writer(out);
    writer.WriteText16(record.Name);
    writer.WriteText16(record.Ident);
    writer.WriteF64(record.Lat);
    writer.WriteF64(record.Lon);
    writer.WriteText16(record.Frequency);
    writer.WriteU8(record.RangeNm);
}

Result<NavaidRecord> DecodeNavaid(ByteReader& reader, std::string_view fileName)
{
    static_cast<void>(fileName); // a navaid has no list that could be wrong
    NavaidRecord record;
    record.Name = reader.ReadText16();
    record.Ident = reader.ReadText16();
    record.Lat = reader.ReadF64();
    record.Lon = reader.ReadF64();
    record.Frequency = reader.ReadText16();
    record.RangeNm = reader.ReadU8();
    return record;
}

LatLon SkipNavaid(ByteReader& reader) noexcept
{
    static_cast<void>(reader.ReadText16());
    static_cast<void>(reader.ReadText16());
    LatLon position;
    position.Lat = reader.ReadF64();
    position.Lon = reader.ReadF64();
    static_cast<void>(reader.ReadText16());
    static_cast<void>(reader.ReadU8());
    return position;
}

/// Writes the position after a record that begins at index start of out and at a 1-based position of its file.
static std::int32_t PatchNextPos(Bytes& out, std::size_t start, std::size_t nextPosAt, std::int64_t position)
{
    const std::int64_t next = position + static_cast<std::int64_t>(out.size() - start);
    if (next > std::numeric_limits<std::int32_t>::max()) {
        out.resize(start);
        return 0;
    }
    ByteWriter(out).PatchI32(nextPosAt, static_cast<std::int32_t>(next));
    return static_cast<std::int32_t>(next);
}

std::int32_t EncodeAirport(Bytes& out, const AirportRecord& record, std::int64_t position)
{
    const std::size_t start = out.size();
    ByteWriter writer(out);
    writer.WriteText16(record.Name);
    writer.WriteText16(record.Icao);
    const std::size_t nextPosAt = out.size();
    writer.WriteI32(0);
    writer.WriteF64(record.Lat);
    writer.WriteF64(record.Lon);
    writer.WriteI32(record.ElevationFt);
    for (const std::string* text :
         {&record.ClearanceFreq, &record.ClearanceName, &record.GroundFreq, &record.GroundName, &record.TowerFreq,
          &record.TowerName, &record.DepartureFreq, &record.DepartureName, &record.ApproachFreq, &record.ApproachName})
        writer.WriteText16(*text);
    EncodeList(writer, record.Runways, Spare::Blank);
    EncodeList(writer, record.Ils, Spare::Blank);
    EncodeList(writer, record.TaxiPoints, Spare::None);
    EncodeList(writer, record.Parkings, Spare::None);
    EncodeList(writer, record.TaxiPaths, Spare::None);
    return PatchNextPos(out, start, nextPosAt, position);
}

Result<AirportRecord> DecodeAirport(ByteReader& reader, std::string_view fileName, std::uint64_t firstByte)
{
    const std::uint64_t start = firstByte + reader.Position();
    AirportRecord record;
    record.Name = reader.ReadText16();
    record.Icao = reader.ReadText16();
    record.NextPos = reader.ReadI32();
    record.Lat = reader.ReadF64();
    record.Lon = reader.ReadF64();
    record.ElevationFt = reader.ReadI32();
    for (std::string* text :
         {&record.ClearanceFreq, &record.ClearanceName, &record.GroundFreq, &record.GroundName, &record.TowerFreq,
          &record.TowerName, &record.DepartureFreq, &record.DepartureName, &record.ApproachFreq, &record.ApproachName})
        *text = reader.ReadText16();
    std::string why = DecodeList(reader, record.Runways, "Runways");
    if (why.empty())
        why = DecodeList(reader, record.Ils, "Ils");
    if (why.empty())
        why = DecodeList(reader, record.TaxiPoints, "TaxiPoints");
    if (why.empty())
        why = DecodeList(reader, record.Parkings, "Parkings");
    if (why.empty())
        why = DecodeList(reader, record.TaxiPaths, "TaxiPaths");
    if (!why.empty())
        return RecordError(fileName, start, why);
    return record;
}

std::int32_t EncodeAirspace(Bytes& out, const AirspaceRecord& record, std::int64_t position)
{
    const std::size_t start = out.size();
    ByteWriter writer(out);
    writer.WriteText16(record.ComName);
    writer.WriteText16(record.Kind);
    const std::size_t nextPosAt = out.size();
    writer.WriteI32(0);
    writer.WriteText16(record.Name);
    writer.WriteText16(record.Frequency);
    for (const double degrees :
         {record.CenterLat, record.CenterLon, record.North, record.South, record.West, record.East})
        writer.WriteF64(degrees);
    EncodeList(writer, record.Points, Spare::Blank);
    writer.WriteI32(record.Floor);
    writer.WriteI32(record.Ceiling);
    return PatchNextPos(out, start, nextPosAt, position);
}

Result<AirspaceRecord> DecodeAirspace(ByteReader& reader, std::string_view fileName)
{
    const std::size_t start = reader.Position();
    AirspaceRecord record;
    record.ComName = reader.ReadText16();
    record.Kind = reader.ReadText16();
    record.NextPos = reader.ReadI32();
    record.Name = reader.ReadText16();
    record.Frequency = reader.ReadText16();
    for (double* degrees :
         {&record.CenterLat, &record.CenterLon, &record.North, &record.South, &record.West, &record.East})
        *degrees = reader.ReadF64();
    std::string why = DecodeList(reader, record.Points, "Points");
    record.Floor = reader.ReadI32();
    record.Ceiling = reader.ReadI32();
    if (!why.empty())
        return RecordError(fileName, start, why);
    return record;
}

AirportHead ReadAirportHead(ByteSpan airportsFile, std::int64_t position) noexcept
{
    if (position < 1 || position > static_cast<std::int64_t>(airportsFile.size()))
        return {};
    ByteReader reader(airportsFile.subspan(static_cast<std::size_t>(position - 1)));
    AirportHead head;
    head.Name = reader.ReadText16();
    head.Icao = reader.ReadText16();
    head.NextPos = reader.ReadI32();
    head.Lat = reader.ReadF64();
    head.Lon = reader.ReadF64();
    head.CutOff = reader.Failed();
    return head;
}
} // namespace corvane
