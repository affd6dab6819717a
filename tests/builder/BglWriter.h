#pragma once

#include "builder/DatabaseSink.h"
#include "core/Bytes.h"
#include "core/MagVarGrid.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane {
/// What the tests need to lay out scenery files by hand. Offsets of a record's fields count from its start, its 8-byte
/// head included, as the decoders count them.
struct BglField {
    std::size_t Offset;
    std::int32_t Value;
};

inline void PutI32(Bytes& bytes, std::size_t at, std::int32_t value)
{
    if (bytes.size() < at + 4)
        bytes.resize(at + 4);
    ByteWriter(bytes).PatchI32(at, value);
}

inline Bytes operator+(Bytes left, const Bytes& right)
{
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

inline Bytes BytesOf(std::string_view text)
{
    return {text.begin(), text.end()};
}

inline Bytes FloatBytes(std::initializer_list<float> values)
{
    Bytes bytes;
    for (const float value : values)
        ByteWriter(bytes).WriteF32(value);
    return bytes;
}

inline Bytes WordBytes(std::initializer_list<std::int32_t> values)
{
    Bytes bytes;
    for (const std::int32_t value : values)
        ByteWriter(bytes).WriteI32(value);
    return bytes;
}

/// A chain record of length bytes (head included, at least), fields, and a text behind them.
inline Bytes BglRecord(std::int32_t tag, std::size_t length, std::initializer_list<BglField> fields,
                       const Bytes& tail = {})
{
    Bytes record(length);
    for (const BglField& field : fields)
        PutI32(record, field.Offset, field.Value);
    record = record + tail;
    PutI32(record, 0, tag);
    PutI32(record, 4, static_cast<std::int32_t>(record.size()) - 8);
    return record;
}

inline Bytes ReferenceRecord(std::int32_t lat, std::int32_t lon, std::int32_t elevation)
{
    return BglRecord(0x10001, 32, {{12, lat}, {20, lon}, {28, elevation}});
}

inline Bytes IcaoRecord(std::string_view icao)
{
    return BglRecord(0x10006, 8, {}, BytesOf(icao));
}

inline Bytes ComRecord(std::int32_t frequency, std::int32_t kind, std::string_view name)
{
    return BglRecord(0x20001, 16, {{8, frequency}, {12, kind}}, BytesOf(name));
}

struct RunwayWords {
    std::int32_t Lat = 0, Lon = 0, Elevation = 0, Heading = 0, Length = 1000, Width = 100, Side = 0, Number = 9;
};
inline Bytes RunwayOf(const RunwayWords& w)
{
    return BglRecord(0x10002, 56,
                     {{12, w.Lat},
                      {20, w.Lon},
                      {28, w.Elevation},
                      {32, w.Heading},
                      {40, w.Length},
                      {44, w.Width},
                      {48, w.Side},
                      {52, w.Number}});
}

inline Bytes IlsOf(std::int32_t lat, std::int32_t lon, std::int32_t heading, std::int32_t frequency,
                   std::string_view ident, std::int32_t kind = 4)
{
    return BglRecord(0x10004, 56, {{12, lat}, {20, lon}, {32, heading}, {36, frequency}, {40, kind}}, BytesOf(ident));
}

/// A heading in whole degrees -180 .. 180 as the scenery stores it.
inline std::int32_t HeadingWord(double degrees)
{
    return static_cast<std::int32_t>(degrees / 360 * 65536 * 65536);
}

/// A sub-list of a ground layout.
inline Bytes LayoutList(std::int32_t count, std::int32_t elementSize, const Bytes& elements)
{
    return WordBytes({count, elementSize}) + elements;
}

inline Bytes TaxiPathElement(std::int32_t kind, std::int32_t start, std::int32_t end, std::int32_t name)
{
    return WordBytes({kind, 0, 0, start, end, 0, 0, name});
}

inline Bytes TaxiwayName(std::string_view name)
{
    Bytes bytes = BytesOf(name);
    bytes.resize(8);
    return bytes;
}

inline Bytes GroundLayoutRecord(const Bytes& lists)
{
    return BglRecord(0x11001, 8, {}, lists);
}

/// A file with the header of the record chains; blocks are appended and named by their offsets.
class BglWriter {
public:
    BglWriter() { Content.resize(0xA8); }

    std::int32_t Append(const Bytes& block)
    {
        const auto at = static_cast<std::int32_t>(Content.size());
        Content.insert(Content.end(), block.begin(), block.end());
        return at;
    }

    /// Names chain A and chain B, 0 for none.
    void SetChains(std::int32_t airports, std::int32_t boundaries)
    {
        PutI32(Content, 0x76, static_cast<std::int32_t>(0x87654321U));
        PutI32(Content, 0x90, 1);
        PutI32(Content, 0x9C, airports);
        PutI32(Content, 0xA4, boundaries);
    }

    /// An airport's data: its head and its chain of records, which a blank record ends.
    std::int32_t AppendAirport(const Bytes& records)
    {
        return Append(WordBytes({1, 0, 1, 0}) + records + WordBytes({0, 0}));
    }

    /// An airport directory with an entry for each name and data offset.
    static Bytes Directory(const std::vector<std::pair<std::string, std::int32_t>>& airports)
    {
        Bytes entries;
        for (const auto& [name, data] : airports)
            entries = entries + BglRecord(0x30002, 16, {{8, 0x50001}, {12, data}}, BytesOf(name));
        return BglRecord(0x30001, 24, {{20, static_cast<std::int32_t>(airports.size())}}, entries);
    }

    Bytes Content;
};

/// A file with one airport.
inline Bytes AirportFile(const std::string& name, const Bytes& records)
{
    BglWriter bgl;
    const std::int32_t data = bgl.AppendAirport(records);
    bgl.SetChains(bgl.Append(BglWriter::Directory({{name, data}}) + WordBytes({0, 0})), 0);
    return bgl.Content;
}

inline Bytes Boundary(const Bytes& records)
{
    return BglRecord(1, 16, {{8, 5}}, records + WordBytes({0, 0}));
}

/// A chain-B record that is a list of boundaries.
inline Bytes BoundaryList(const Bytes& boundaries)
{
    return BglRecord(1, 16, {{8, 4}}, boundaries + WordBytes({0, 0}));
}

inline Bytes BoundaryFile(const Bytes& boundaries)
{
    BglWriter bgl;
    bgl.SetChains(0, bgl.Append(BoundaryList(boundaries) + WordBytes({0, 0})));
    return bgl.Content;
}

inline Bytes VertexRecord(std::int32_t tag, std::int32_t lat, std::int32_t lon)
{
    return BglRecord(tag, 24, {{12, lat}, {20, lon}});
}

inline Bytes StartRecord(std::int32_t lat, std::int32_t lon, std::int32_t floor, std::int32_t ceiling)
{
    return BglRecord(0x12002, 32, {{12, lat}, {20, lon}, {24, floor}, {28, ceiling}});
}

/// A station of the sectioned layout, type byte and all; offsets as in the decoders.
inline Bytes NavaidBytes(std::size_t size, std::initializer_list<std::pair<std::size_t, Bytes>> fields)
{
    Bytes record(size);
    record[0] = 4;
    for (const auto& [at, bytes] : fields)
        std::copy(bytes.begin(), bytes.end(), record.begin() + static_cast<std::ptrdiff_t>(at));
    return record;
}

/// Keeps the records of a scan.
struct RecordList final : DatabaseSink {
    void AddAirport(const AirportRecord& record) override { Airports.push_back(record); }
    void AddVor(const NavaidRecord& record) override { Vors.push_back(record); }
    void AddNdb(const NavaidRecord& record) override { Ndbs.push_back(record); }
    void AddAirspace(const AirspaceRecord& record) override { Airspaces.push_back(record); }

    std::vector<AirportRecord> Airports;
    std::vector<NavaidRecord> Vors;
    std::vector<NavaidRecord> Ndbs;
    std::vector<AirspaceRecord> Airspaces;
};
} // namespace corvane
