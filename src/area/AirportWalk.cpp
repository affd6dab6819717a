#include "area/AirportWalk.h"

#include "core/NumberText.h"

namespace corvane {
/// The head at an offset, from a view just large enough: names are short, but the format allows 65535 characters.
static Result<AirportHead> HeadAt(ByteSource& airports, std::uint64_t offset)
{
    constexpr std::size_t UsualHead = 256;
    constexpr std::size_t LongestHead = 2 * (2 + 65535) + 4 + 2 * 8;
    AirportHead head;
    for (const std::size_t count : {UsualHead, LongestHead}) {
        const Result<ByteSpan> bytes = airports.View(offset, count);
        if (!bytes)
            return bytes.error();
        head = ReadAirportHead(*bytes, 1);
        if (!head.CutOff)
            break;
    }
    return head;
}

static Error WalkError(const ByteSource& airports, std::uint64_t offset, const std::string& why)
{
    return Fail(airports.Name(), "the record at byte " + NumberText(static_cast<std::int64_t>(offset)) + " " + why);
}

Result<void> WalkAirports(ByteSource& airports, const AirportVisit& visit, EarlyEnds* earlyEnds)
{
    std::uint64_t offset = 0;
    while (offset < airports.Size()) {
        const std::uint64_t left = airports.Size() - offset;
        const Result<AirportHead> head = HeadAt(airports, offset);
        if (!head)
            return head.error();
        const std::int64_t next = std::int64_t{head->NextPos} - 1; // positions count from 1
        const bool cutOff = head->CutOff || next > static_cast<std::int64_t>(airports.Size());
        const bool isLast = head->Name.empty() || head->Icao.empty();
        if (head->CutOff || (cutOff && !isLast))
            NoteEarlyEnd(earlyEnds, airports);
        if (isLast)
            break;
        if (cutOff) {
            visit(*head, {offset, left});
            break;
        }
        if (next <= static_cast<std::int64_t>(offset))
            return WalkError(airports, offset, "gives the next one's position as " + NumberText(head->NextPos));
        visit(*head, {offset, static_cast<std::uint64_t>(next) - offset});
        offset = static_cast<std::uint64_t>(next);
    }
    return {};
}

Result<AirportRecord> ReadAirportAt(ByteSource& airports, const RecordExtent& extent)
{
    const Result<ByteSpan> bytes = airports.ViewAlone(extent.Offset, static_cast<std::size_t>(extent.Size));
    if (!bytes)
        return bytes.error();
    ByteReader reader(bytes->first(std::min<std::size_t>(bytes->size(), extent.Size)));
    return DecodeAirport(reader, airports.Name(), extent.Offset);
}
} // namespace corvane
