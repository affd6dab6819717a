#include "builder/BglScanner.h"
#include "builder/EncodedRecords.h"

#include <cstdlib>

/// A scenery file through the whole scan, into records in the database's encoding.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t MostBytesPerByte = 200; // of records; the scan promises a small multiple of the file's size
    constexpr std::size_t SmallFile = 4096;
    constexpr std::size_t Blanks = std::size_t{4} * 32767 * 32; // ground elements behind the file's end
    const corvane::MagVarGrid grid;
    corvane::EncodedRecords records;
    static_cast<void>(corvane::ScanBgl({data, size}, grid, records));
    if (records.ByteCount() > MostBytesPerByte * (size + SmallFile) + Blanks)
        std::abort();
    if (!records.MoveAirports(1000) || !records.MoveAirspaces(1000))
        std::abort();
    return 0;
}
