#pragma once

#include "core/Geodesy.h"
#include "core/MagVarGrid.h"
#include "core/Records.h"
#include "world/GroundDraft.h"
#include "world/ImportLog.h"
#include "world/RowReader.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace corvane {
/// An airport as the first row of its own names it.
struct AirportHeader {
    std::int32_t ElevationFt = 0;
    std::string Code; ///< in capitals; newer files have the official one in another row
    std::string Name;
};

/// A row 1, 16 or 17, read from behind its code; fails without an elevation, a code or a name.
AirportHeader ReadAirportHeader(RowReader& row);
/// Whether the name tells that the airport is closed: it begins with "[X]", or has "closed" as a word between
/// blanks.
bool IsClosed(std::string_view name);

/// An airport of an apt.dat while its rows are read.
class AirportDraft {
public:
    /// More rows than this of one airport are not read.
    static constexpr std::int64_t MostRows = 1000000;

    /// grid must outlive the draft
    AirportDraft(AirportHeader header, const MagVarGrid& grid, bool pavements);

    /// Takes a row that stands behind the header, read from behind its code; codes that mean nothing to the database
    /// are passed by. The reader fails where the row cannot be read.
    void Take(int code, RowReader& row, std::int64_t line);

    /// The official code where there is one, else the header's.
    [[nodiscard]] const std::string& Icao() const noexcept;
    [[nodiscard]] const std::string& HeaderCode() const noexcept { return m_header.Code; }

    /// The record, without ILS; nothing where no row says where the airport is. The draft is of no more use.
    std::optional<AirportRecord> Finish(ImportLog& log);
    /// After Finish: how many points of pavements were too many.
    [[nodiscard]] std::int64_t PavementPointsLeftOut() const noexcept { return m_pavementPointsLeftOut; }

private:
    void TakeProperty(RowReader& row);
    void TakeFrequency(int kind, bool inKilohertz, RowReader& row);
    void TakeRunway(bool onWater, RowReader& row);
    void TakeStrip(RowReader& row);
    void TakeParking(bool hasType, RowReader& row);
    void TakeHelipad(RowReader& row);
    [[nodiscard]] std::optional<LatLon> Place() const;

    AirportHeader m_header;
    const MagVarGrid& m_grid;
    AirportRecord m_airport;
    GroundDraft m_ground;
    std::string m_icaoCode;
    std::optional<double> m_datumLat;
    std::optional<double> m_datumLon;
    std::vector<ParkingRecord> m_helipads;
    std::optional<std::size_t> m_classedParking; ///< the parking place that a width class would belong to
    std::optional<LatLon> m_viewpoint;
    std::optional<LatLon> m_landmark; ///< a beacon or a windsock
    std::int64_t m_rows = 0;
    std::int64_t m_pavementPointsLeftOut = 0;
};
} // namespace corvane
