#include "core/Bytes.h"
#include "core/RecordCodec.h"

#include <cstdlib>

using namespace corvane;

/// Decodes records until one fails or the bytes end; each must come out of its own encoding as it is.
template <class Decode, class Encode> static void ReadRecords(ByteSpan file, const Decode& decode, const Encode& encode)
{
    ByteReader reader(file);
    while (reader.Left() > 0 && !reader.Failed()) { // a file that ends early ends with the record cut off
        const auto record = decode(reader, "file");
        if (!record)
            return;
        Bytes first;
        encode(first, *record);
        ByteReader again(first);
        const auto decoded = decode(again, "again");
        Bytes second;
        if (!decoded || again.Left() != 0)
            std::abort();
        encode(second, *decoded);
        if (first != second)
            std::abort();
    }
}

/// The first byte chooses one of the database's files, the others are its content.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const ByteSpan file = ByteSpan(data, size).subspan(1);
    switch (data[0] % 3) {
    case 0:
        ReadRecords(
            file, [](ByteReader& reader, std::string_view name) { return DecodeAirport(reader, name); },
            [](Bytes& out, const AirportRecord& record) { EncodeAirport(out, record, 1); });
        static_cast<void>(ReadAirportHead(file, 1));
        break;
    case 1:
        ReadRecords(
            file, [](ByteReader& reader, std::string_view name) { return DecodeNavaid(reader, name); },
            [](Bytes& out, const NavaidRecord& record) { EncodeNavaid(out, record); });
        break;
    default:
        ReadRecords(
            file, [](ByteReader& reader, std::string_view name) { return DecodeAirspace(reader, name); },
            [](Bytes& out, const AirspaceRecord& record) { EncodeAirspace(out, record, 1); });
        break;
    }
    return 0;
}
