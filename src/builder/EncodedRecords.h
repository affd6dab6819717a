#pragma once

#include "builder/DatabaseSink.h"
#include "core/Bytes.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

namespace corvane {
/// How many records each database file holds.
struct RecordCounts {
    std::int32_t Airports = 0;
    std::int32_t Vors = 0;
    std::int32_t Ndbs = 0;
    std::int32_t Airspaces = 0;
    bool operator==(const RecordCounts&) const = default;
};

/// Records in the database's encoding, made before it is known where in the database files they will stand: their
/// positions count from 1 and are moved by DatabaseWriter::Append.
class EncodedRecords final : public DatabaseSink {
public:
    /// Called with this object once its bytes are SpillBytes or more, to take them out and Clear it.
    using Spill = std::function<void(EncodedRecords&)>;
    static constexpr std::size_t SpillBytes = std::size_t{1} * 1024 * 1024;

    EncodedRecords() = default;
    explicit EncodedRecords(Spill spill) : m_spill(std::move(spill)) {}

    void AddAirport(const AirportRecord& record) override;
    void AddVor(const NavaidRecord& record) override;
    void AddNdb(const NavaidRecord& record) override;
    void AddAirspace(const AirspaceRecord& record) override;

    [[nodiscard]] std::size_t ByteCount() const noexcept
    {
        return Airports.size() + Vors.size() + Ndbs.size() + Airspaces.size();
    }

    /// Add an offset to the NextPos of every airport or airspace. False when one no longer fits 32 bits.
    bool MoveAirports(std::int64_t offset) { return Move(Airports, m_airportNextPosAt, offset); }
    bool MoveAirspaces(std::int64_t offset) { return Move(Airspaces, m_airspaceNextPosAt, offset); }
    void Clear() noexcept;

    Bytes Airports;
    Bytes Vors;
    Bytes Ndbs;
    Bytes Airspaces;
    RecordCounts Counts;

private:
    static bool Move(Bytes& bytes, const std::vector<std::size_t>& nextPosAt, std::int64_t offset);
    void SpillWhenLarge();

    Spill m_spill;
    std::vector<std::size_t> m_airportNextPosAt; ///< where in Airports each NextPos stands
    std::vector<std::size_t> m_airspaceNextPosAt;
};
} // namespace corvane
