#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace corvane {
/// Modules: libraries of the program that are loaded only where they are wanted.

/// The module whose file has that name: beside the program's own file, as in a build tree, or in lib/corvane beside its
/// folder, as installed. Nothing else is looked at, so that no stranger's file is ever loaded. Where there is none, the
/// place where an installed one ought to be.
std::filesystem::path ModuleFile(std::string_view name);

struct ModuleFunction {
    void (*Function)() = nullptr; ///< null: not found
    std::string Why;              ///< the system's reason then
};
/// Loads a module, which stays until the program ends, and finds a function in it.
ModuleFunction FindModuleFunction(const std::filesystem::path& module, const char* function);
} // namespace corvane
