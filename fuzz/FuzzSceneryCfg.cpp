#include "builder/SceneryCfg.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

/// A scenery.cfg into its areas; the folders are left alone, since they are the disk's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t MostTimesTheFile = 20;
    constexpr std::size_t SmallFile = 16384;
    const std::string_view content(reinterpret_cast<const char*>(data), size);
    const auto areas = corvane::ParseSceneryCfg(content, "scenery.cfg");
    if (!areas)
        return 0;
    std::size_t held = 0;
    for (const corvane::SceneryArea& area : *areas)
        held += area.Title.size() + area.Local.size();
    if (held > MostTimesTheFile * (size + SmallFile))
        std::abort();
    return 0;
}
