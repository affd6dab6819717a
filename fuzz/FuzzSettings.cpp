#include "core/Settings.h"

#include <cstdlib>

/// A settings file; what is read must come out of its own encoding as it is.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto settings = corvane::DecodeSettings({data, size}, "settings");
    if (!settings)
        return 0;
    const corvane::Bytes encoded = corvane::EncodeSettings(*settings);
    const auto again = corvane::DecodeSettings(encoded, "again");
    if (!again || *again != *settings)
        std::abort();
    return 0;
}
