#pragma once

#include "core/MagVarGrid.h"
#include "core/Records.h"
#include "core/Result.h"
#include "world/RowFile.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace corvane {
/// A localizer of a nav.dat.
struct Localizer {
    std::string Ident;
    std::string Frequency; ///< MHz as the database's text
    LatLon Antenna;        ///< behind the far end of its runway
    double Course = 0;     ///< true, 0 <= course < 360
    std::string Airport;   ///< code in capitals
    std::string Runway;    ///< as RunwayNumber gives it; may be empty
};

/// The localizers of a nav.dat, to be given to the airports that they name.
class LocalizerTable {
public:
    static constexpr std::size_t MostLocalizers = 1000000;

    void Add(Localizer localizer);
    [[nodiscard]] std::size_t Count() const noexcept { return m_localizers.size(); }
    /// The ILS of an airport that is known by either code, in the order of the file. Each stands at the end of the
    /// runway that it names, so that the approach ends there; at its antenna where the airport has no such end.
    std::vector<IlsRecord> Take(const AirportRecord& airport, const std::string& otherCode, const MagVarGrid& grid);
    /// How many no airport has taken.
    [[nodiscard]] std::int64_t Left() const noexcept { return m_left; }

private:
    std::vector<Localizer> m_localizers;
    std::unordered_map<std::string, std::vector<std::size_t>> m_byAirport;
    std::int64_t m_left = 0;
};

/// Takes the records of a nav.dat one by one.
struct NavSink {
    std::function<void(const NavaidRecord&)> AddVor;
    std::function<void(const NavaidRecord&)> AddNdb;
};

/// Reads VORs, NDBs and localizers. Errors: the head, a cut-off file, or one without any of them.
Result<void> ReadNavFile(RowFile& rows, const NavSink& sink, LocalizerTable& localizers);
} // namespace corvane
