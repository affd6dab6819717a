#include "os/Modules.h"

#include <dlfcn.h>

namespace corvane {
static std::string Reason()
{
    const char* const reason = dlerror(); // NOLINT(concurrency-mt-unsafe): each thread has its own in glibc
    return reason == nullptr ? "is not known" : reason;
}

ModuleFunction FindModuleFunction(const std::filesystem::path& module, const char* function)
{
    void* const loaded = dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (loaded == nullptr)
        return {nullptr, Reason()};
    void* const found = dlsym(loaded, function);
    if (found == nullptr)
        return {nullptr, Reason()};
    return {reinterpret_cast<void (*)()>(found), {}};
}
} // namespace corvane
