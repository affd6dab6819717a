#pragma once

#include "core/MagVarGrid.h"
#include "core/Records.h"
#include "core/Result.h"
#include "world/NavFile.h"
#include "world/RowFile.h"

#include <cstdint>
#include <functional>

namespace corvane {
/// Airports of an apt.dat that the database does not get.
struct AirportsLeftOut {
    std::int64_t Closed = 0;
    std::int64_t Repeated = 0;       ///< of a code that an airport before has
    std::int64_t WithoutPlace = 0;   ///< no row says where they are
    std::int64_t PavementPoints = 0; ///< of the edges of pavements, beyond what an airport can have
};

struct AptOptions {
    bool Pavements = true; ///< the edges of pavements, at airports without a network of taxiways
};

/// Reads the airports of an apt.dat one by one, each with its ILS, and hands them on in the order of the file.
///
/// Errors: the head, a cut-off file, one without any airport; and those of sink, which end the reading.
Result<void> ReadAptFile(RowFile& rows, const AptOptions& options, const MagVarGrid& grid, LocalizerTable& localizers,
                         ImportLog& log, AirportsLeftOut& leftOut,
                         const std::function<Result<void>(const AirportRecord&)>& sink);
} // namespace corvane
