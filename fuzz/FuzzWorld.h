#pragma once

#include "core/ByteSource.h"
#include "world/AptFile.h"
#include "world/NavFile.h"
#include "world/OpenAirFile.h"

#include <cstdint>
#include <cstdlib>
#include <memory>

namespace corvane {
/// A file of the world import from a fuzzer's bytes; what is passed over is counted.
struct FuzzedWorldFile {
    FuzzedWorldFile(const std::uint8_t* data, std::size_t size)
        : Lines(std::make_unique<MemorySource>("fuzzed", ByteSpan(data, size)))
    {
    }

    std::int64_t PassedOver = 0;
    ImportLog::Teller Tell = [this](const PassedLine& line) {
        ++PassedOver;
        if (line.Why.empty())
            std::abort();
    };
    ImportLog Log{"fuzzed", Tell};
    PartCallback Progress;
    TextLines Lines;
    RowFile Rows{Lines, Log, Progress};
    LocalizerTable Localizers;

    /// Whether a position lies on earth, not-a-number not among them.
    static void RequireOnEarth(double lat, double lon)
    {
        if (!(lat >= -90 && lat <= 90 && lon >= -180 && lon <= 180))
            std::abort();
    }
};
} // namespace corvane
