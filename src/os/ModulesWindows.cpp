#include "os/Modules.h"

#include <system_error>
#include <windows.h>

namespace corvane {
static ModuleFunction NotFound()
{
    return {nullptr, std::system_category().message(static_cast<int>(GetLastError()))};
}

ModuleFunction FindModuleFunction(const std::filesystem::path& module, const char* function)
{
    const HMODULE loaded = LoadLibraryW(module.c_str());
    if (loaded == nullptr)
        return NotFound();
    const FARPROC found = GetProcAddress(loaded, function);
    if (found == nullptr)
        return NotFound();
    return {reinterpret_cast<void (*)()>(found), {}};
}
} // namespace corvane
