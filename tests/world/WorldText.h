#pragma once

#include "core/ByteSource.h"
#include "world/AptFile.h"
#include "world/NavFile.h"
#include "world/OpenAirFile.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
inline ByteSpan AsBytes(std::string_view text)
{
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

/// A file of the import that is held in memory, and what was passed over in it.
struct WorldText {
    explicit WorldText(std::string_view text) : Lines(std::make_unique<MemorySource>("world.txt", AsBytes(text))) {}

    std::vector<PassedLine> Passed;
    ImportLog::Teller Tell = [this](const PassedLine& line) { Passed.push_back(line); };
    ImportLog Log{"world.txt", Tell};
    PartCallback Progress;
    TextLines Lines;
    RowFile Rows{Lines, Log, Progress};
};

/// The airports of an apt.dat of these rows, without its head and its end.
struct ReadAirports {
    explicit ReadAirports(const std::string& rows, const AptOptions& options = {}, LocalizerTable localizers = {})
        : Text("I\n1000 Version\n" + rows + "99\n"), File(Text)
    {
        const auto grid = std::make_unique<MagVarGrid>();
        Status =
            ReadAptFile(File.Rows, options, *grid, localizers, File.Log, LeftOut, [this](const AirportRecord& airport) {
                Airports.push_back(airport);
                return Result<void>();
            });
    }

    std::string Text;
    WorldText File;
    AirportsLeftOut LeftOut;
    std::vector<AirportRecord> Airports;
    Result<void> Status;
};
} // namespace corvane
