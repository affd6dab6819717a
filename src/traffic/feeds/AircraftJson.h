#pragma once

#include "core/Result.h"
#include "traffic/feeds/FeedReport.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// An aircraft of an aircraft.json, with the ages of what it holds in seconds before the file's own time.
struct AircraftJsonEntry {
    FeedReport Report;
    double SeenS = 0;         ///< since any message
    double SeenPositionS = 0; ///< since the position; the same as SeenS where the file does not tell
};

struct AircraftJson {
    static constexpr std::size_t LargestFile = 33554432; ///< bytes; nothing above is read
    static constexpr int DeepestNesting = 8;
    static constexpr std::size_t MostAircraft = 65536; ///< what stands behind them is passed over

    std::optional<double> NowS;  ///< the file's time in seconds since 1970
    std::size_t Fingerprint = 0; ///< of all its bytes, to notice that it is still the same
    std::vector<AircraftJsonEntry> Aircraft;
};

/// Reads an aircraft.json, of the older and the newer member names. Members that it does not know or that hold nothing
/// sound are passed over; so are aircraft whose address cannot be read. An Error when the text is no whole JSON value,
/// nests too deeply, or has no list of aircraft: a file that is only half there.
/// name  of the file or its web address, for the Error. Layout: docs/formats/traffic-feeds.md
Result<AircraftJson> DecodeAircraftJson(std::string text, const std::string& name);
} // namespace corvane
