#include "app/UserFolders.h"

#include "builder/BuildDriver.h"
#include "core/File.h"
#include "core/Settings.h"
#include "demo/DemoWorld.h"

#include <memory>
#include <system_error>

namespace corvane {
Result<std::filesystem::path> PrepareUserFolder(const std::filesystem::path& folder)
{
    if (folder.empty())
        return Fail("user's folder", "the system names none");
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error)
        return Fail(FullName(folder), error.message());
    return folder;
}

Result<std::filesystem::path> PrepareDemonstration(const std::filesystem::path& folder)
{
    Result<std::filesystem::path> prepared = PrepareUserFolder(folder);
    if (!prepared || FileExists(folder / SettingsFileName))
        return prepared;
    if (const auto written = WriteDemoWorld({folder, DefaultDataFolder(), 0}); !written)
        return written.error();
    const auto driver = std::make_unique<BuildDriver>(folder, FolderBeside(folder, "fs2002"), Fs2002Version);
    const Result<SettingsRecord> built = driver->Run();
    if (built)
        return folder;
    driver->Abandon();
    return built.error();
}
} // namespace corvane
