#pragma once

#include "core/Result.h"
#include "core/SimulatorFolder.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// An entry of the simulator's scenery list. Texts are 8-bit Windows-1252.
struct SceneryArea {
    std::string Title; ///< as written; blanks are kept
    /// The area's folder: as written, and after ResolveSceneryFolders a lower-case path that ends in "\scenery", or
    /// empty where there is no such folder.
    std::string Local;
    /// Where Local was found on this disk, whose letter case may matter; set by ResolveSceneryFolders.
    std::filesystem::path Folder;
    bool operator==(const SceneryArea&) const = default;
};

/// The areas of a scenery.cfg, in file order: its sections whose names begin with "area." in any letter case. Lines may
/// end in CR LF, CR or LF. Errors name the full path: a file that cannot be read, that lists more areas than the
/// simulator can, or whose repeated section lines make the search longer than its size warrants.
Result<std::vector<SceneryArea>> ReadSceneryCfg(const std::filesystem::path& path);
/// ReadSceneryCfg of a file's content.
Result<std::vector<SceneryArea>> ParseSceneryCfg(std::string_view content, std::string_view fileName);

/// The text behind the first "key=" of the block, in any letter case, up to its line's end; not trimmed. Empty where
/// there is none. The match is one of plain text: a key that ends in another key's name is found for it too.
std::string KeyValue(std::string_view block, std::string_view key);

/// Turns every area's Local into its scenery folder: as written, or relative to the simulator's main folder. Folders
/// that do not exist leave an empty Local; where the disk would not tell whether one does, that is an Error. Both
/// separators and any letter case are found.
Result<void> ResolveSceneryFolders(std::vector<SceneryArea>& areas, const SimulatorFolder& simulator);
} // namespace corvane
