#pragma once

#include "builder/DatabaseSink.h"
#include "core/Bytes.h"

#include <cstdint>

namespace corvane {
/// How many records each database file holds.
struct RecordCounts {
    std::int32_t Airports = 0;
    std::int32_t Vors = 0;
    std::int32_t Ndbs = 0;
    std::int32_t Airspaces = 0;
    bool operator==(const RecordCounts&) const = default;
};

/// The records of one scenery file in the database's encoding, made before it is known where in the database files they
/// will stand: their positions count from 1 and are moved by DatabaseWriter::Append.
class EncodedRecords final : public DatabaseSink {
public:
    void AddAirport(const AirportRecord& record) override;
    void AddVor(const NavaidRecord& record) override;
    void AddNdb(const NavaidRecord& record) override;
    void AddAirspace(const AirspaceRecord& record) override;

    [[nodiscard]] std::size_t ByteCount() const noexcept
    {
        return Airports.size() + Vors.size() + Ndbs.size() + Airspaces.size();
    }

    Bytes Airports;
    Bytes Vors;
    Bytes Ndbs;
    Bytes Airspaces;
    RecordCounts Counts;
};

/// Adds offset to the NextPos of each of the records that stand back to back in bytes, airports or airspaces, whose
/// positions count from 1. Returns false when a position no longer fits 32 bits.
bool MoveRecords(Bytes& bytes, std::int64_t offset);
} // namespace corvane
