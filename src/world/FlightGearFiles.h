#pragma once

#include <filesystem>
#include <optional>

namespace corvane {
/// The airport and navaid files of an installed FlightGear: Airports/apt.dat and Navaids/nav.dat below a folder, packed
/// or plain. A file that is not there is empty.
struct FlightGearFiles {
    std::filesystem::path AptDat;
    std::filesystem::path NavDat;
};
FlightGearFiles FilesOfFlightGear(const std::filesystem::path& folder);
/// The folder where FlightGear's data lie: that of the environment's FG_ROOT, or where distributions put it.
std::optional<std::filesystem::path> FindFlightGear();
} // namespace corvane
