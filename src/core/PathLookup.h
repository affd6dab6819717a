#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

namespace corvane {
/// Finds an existing file or folder from a path written with either separator ("\" or "/") in any letter case, as
/// simulator files write them: "C:/fs2002/scenery\Magdec.BGL" on a disk that holds "Scenery/magdec.bgl".
///
/// writtenPath  8-bit text (Windows-1252), absolute or relative to the working directory; empty parts are ignored
/// Returns      the path as the disk spells it, or nothing. Of several spellings the exact one comes first, then the
///              first in byte order whose remaining parts exist as well.
std::optional<std::filesystem::path> FindPath(std::string_view writtenPath);

/// The path of an 8-bit text as it is written, without a look at the disk; both separators separate.
std::filesystem::path PathFromText(std::string_view writtenPath);
/// The 8-bit text of a path; characters without a Windows-1252 code become "?".
std::string TextFromPath(const std::filesystem::path& path);
} // namespace corvane
