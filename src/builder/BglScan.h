#pragma once

#include "builder/DatabaseSink.h"
#include "builder/ScanProblems.h"
#include "builder/WorkBudget.h"
#include "core/BglReader.h"
#include "core/MagVarGrid.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace corvane {
/// One scenery file on its way through the decoders.
///
/// The decoders absorb the errors of their own records with Absorb; an error that is still there when a
/// walk looks (Stopped) ends the scan of the file.
struct BglScan {
    BglScan(ByteSpan file, const MagVarGrid& grid, DatabaseSink& sink) noexcept
        : Reader(file), Budget(Reader.Size()), Grid(grid), Sink(sink)
    {
    }

    /// Ends the failure of a record, if there is one: it has cost that record alone.
    void Absorb(std::string_view record, std::int64_t at)
    {
        if (Reader.Failed() && Problems != nullptr)
            Problems->Add(at, std::string(record) + " leads outside the file's " + std::to_string(Reader.Size()) +
                                  " bytes and was cut short");
        Reader.ClearFailure();
    }

    BglReader Reader;
    WorkBudget Budget;
    /// List elements past the file's end, which no byte pays for: more than one list has, and too few to matter.
    std::int64_t BlanksLeft = 4 * std::int64_t{32767};
    const MagVarGrid& Grid;
    DatabaseSink& Sink;
    ScanProblems* Problems = nullptr; ///< where absorbed errors are noted; null: nowhere

    /// Where the walk stands, for the message of a failed scan.
    std::string_view Place = "the file header";
    std::int64_t PlaceAt = 0;

    [[nodiscard]] bool Stopped() const noexcept { return Reader.Failed() || Budget.Exhausted() || BlanksLeft < 0; }

    /// False once more elements past the file's end have been claimed than a file may.
    bool SpendBlanks(std::int64_t count) noexcept
    {
        BlanksLeft -= count;
        return BlanksLeft >= 0;
    }

    /// Stores a value just read, unless reading it has failed. Returns whether it was stored.
    template <class T> bool Keep(T& field, T value)
    {
        if (Stopped())
            return false;
        field = std::move(value);
        return true;
    }

    void EnterPlace(std::string_view place, std::int64_t at) noexcept
    {
        Place = place;
        PlaceAt = at;
    }

    /// Reader.ReadText, paid for; a length that the file does not have costs nothing, as it reads nothing.
    std::string ReadText(std::int64_t offset, std::int64_t length)
    {
        if (length <= Reader.Size() && !Budget.Spend(length))
            return {};
        return Reader.ReadText(offset, length);
    }
};

/// The head of a chain record. The size leaves the head's own 8 bytes out.
struct BglRecordHead {
    static constexpr std::int64_t Size = 8;

    std::int32_t Tag = 0;
    std::int64_t ContentSize = 0;

    /// Where the chain goes on; a record that does not lead forward ends it, so that no chain turns in a circle.
    [[nodiscard]] std::optional<std::int64_t> Next(std::int64_t at) const noexcept
    {
        if (ContentSize + Size <= 0)
            return std::nullopt;
        return at + ContentSize + Size;
    }
};

inline BglRecordHead ReadRecordHead(BglScan& scan, std::int64_t at) noexcept
{
    scan.Budget.Spend(BglRecordHead::Size);
    return {scan.Reader.ReadI32(at), scan.Reader.ReadI32(at + 4)};
}

/// Degrees from the signed 32-bit coordinates of the record chains.
inline double ChainLatitude(std::int32_t value) noexcept
{
    return value * 90.0 / 10001750.0;
}
inline double ChainLongitude(std::int32_t value) noexcept
{
    return value * 360.0 / 4294967296.0;
}
} // namespace corvane
