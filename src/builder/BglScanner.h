#pragma once

#include "builder/DatabaseSink.h"
#include "builder/ScanProblems.h"
#include "core/Bytes.h"
#include "core/MagVarGrid.h"
#include "core/Result.h"

#include <cstdint>
#include <filesystem>
#include <string_view>

namespace corvane {
/// Decodes one scenery file: VORs, then NDBs, then the airports and boundaries of the record chains.
///
/// Errors inside an airport, a station or a boundary are absorbed there. An Error (What = fileName) is what remains: a
/// file cut off inside its directories, or one whose records name each other more often than its size warrants. The
/// sink has then received the records before it. Layout: docs/formats.md.
///
/// problems  told of the absorbed errors and of what remains, with their places; null: nobody asks
Result<void> ScanBgl(ByteSpan file, const MagVarGrid& grid, DatabaseSink& sink, std::string_view fileName = "BGL",
                     ScanProblems* problems = nullptr);

/// The file's first bytes, by which it is known whether there is anything to read in it.
inline constexpr std::size_t BglHeaderSize = 0x7A;
/// Whether a file that begins with these bytes is worth loading; what the header is short of reads as 0.
bool BglOfInterest(ByteSpan header) noexcept;

/// The content of scenery files, one after another, in memory that is kept from file to file.
class BglFileLoader {
public:
    enum class Loaded {
        Whole,
        NotOfInterest, ///< by its header; left unread
        TooLarge,      ///< of interest, but larger than asked for; left unread
    };

    /// Errors name the full path: a file that cannot be opened or read, or is too large for the format's offsets.
    Result<Loaded> Load(const std::filesystem::path& path, std::uint64_t wholeUpTo);

    [[nodiscard]] ByteSpan Content() const noexcept { return {m_bytes.data(), m_size}; }

private:
    Bytes m_bytes;
    std::size_t m_size = 0;
};

/// Loads and scans one scenery file of any size.
Result<void> ScanBglFile(const std::filesystem::path& path, const MagVarGrid& grid, DatabaseSink& sink,
                         ScanProblems* problems = nullptr);
} // namespace corvane
