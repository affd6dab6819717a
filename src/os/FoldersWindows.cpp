#include "os/Folders.h"

#include <array>
#include <cstdlib>
#include <windows.h>

namespace corvane {
namespace fs = std::filesystem;

fs::path ProgramFile()
{
    std::array<wchar_t, 32768> name{}; // the longest path that Windows knows
    const DWORD length = GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
    return length < name.size() ? fs::path(name.data(), name.data() + length) : fs::path();
}

fs::path UserDataFolder(std::string_view name)
{
    const wchar_t* const data = _wgetenv(L"LOCALAPPDATA");
    return data == nullptr ? fs::path() : fs::path(data) / name;
}
} // namespace corvane
