#include "fuzz/FuzzWorld.h"

/// Gzip data, whatever the bytes begin with, unpacked into lines: bounded by what deflate can do, a thousandfold.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace corvane;
    constexpr std::size_t MostTimesTheFile = 1100;
    Bytes bytes = {0x1F, 0x8B};
    bytes.insert(bytes.end(), data, data + size);
    FuzzedWorldFile file(bytes.data(), bytes.size());
    std::size_t unpacked = 0;
    while (file.Lines.Next())
        unpacked += file.Lines.Line().size() + 1;
    if (unpacked > MostTimesTheFile * bytes.size() || (file.Lines.Failure() && file.Lines.Failure()->Why.empty()))
        std::abort();
    return 0;
}
