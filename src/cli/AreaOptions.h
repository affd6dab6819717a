#pragma once

#include "area/AreaModel.h"
#include "cli/Commands.h"
#include "core/MagVarGrid.h"

#include <memory>
#include <ostream>
#include <string>

namespace corvane {
/// Which area to load, as the area and scope commands take it: exactly one of the two; as alerts takes it: one or none.
struct AreaOptions {
    FolderOptions Folders;
    std::string Airport; ///< a list entry: "KSEA - Seattle Tacoma Intl"
    std::string Sector;

    [[nodiscard]] bool Given() const noexcept { return !Airport.empty() || !Sector.empty(); }
};

void AddAreaOptions(CLI::App& command, AreaOptions& options);
/// As AddAreaOptions, where the command does without an area as well.
void AddOptionalAreaOptions(CLI::App& command, AreaOptions& options);

/// Loads the area from the database. A text that names no airport or sector gives the area that the load gives then,
/// and a notice.
Result<AreaModel> LoadArea(const AreaOptions& options, std::ostream& notices);

/// The simulator's variation grid; zero everywhere where its folder is not known.
Result<std::unique_ptr<MagVarGrid>> LoadMagVarGrid(const FolderOptions& folders);
} // namespace corvane
