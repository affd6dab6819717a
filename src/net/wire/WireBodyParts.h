#pragma once

#include "net/wire/WireRecords.h"

#include <utility>
#include <vector>

namespace corvane::directplay {
/// The body of a message: a reader behind the signature part, and the bytes that offsets count in.
struct Body {
    explicit Body(ByteSpan bare) : In(bare), All(bare) { In.ReadBytes(SignaturePart); }

    ByteReader In;
    ByteSpan All;
};

/// A text at an offset that may be 0 (absent); the offset must lie behind the fixed part of the message.
bool ReadOffsetText(const Body& body, std::uint32_t offset, std::uint32_t fixedEnd, std::u16string& text);

/// The ids and offsets that messages about players and groups begin with.
struct ManagementBody {
    WireId To = 0;
    WireId Player = 0;
    WireId Group = 0;
    std::uint32_t CreateOffset = 0;
    std::uint32_t PasswordOffset = 0;
};

ManagementBody ReadManagementBody(Body& body);
/// The packed player that a management body points to.
bool ReadCreated(const Body& body, const ManagementBody& ids, PackedPlayer& player);

/// Reads so many players or groups; false where they cannot all be there.
template <class Entry, class ReadEntry>
bool ReadEntries(ByteReader& in, std::uint32_t count, std::vector<Entry>& entries, ReadEntry readEntry)
{
    constexpr std::size_t SmallestEntry = 20;
    if (count > in.Left() / SmallestEntry)
        return false;
    entries.reserve(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        auto entry = readEntry(in);
        if (!entry)
            return false;
        entries.push_back(std::move(*entry));
    }
    return true;
}

/// Reads a session as a host tells it to newcomers: its description, names, players and groups.
template <class Table, class ReadEntry> bool ReadTable(Body& body, Table& message, ReadEntry readEntry)
{
    constexpr std::uint32_t FixedEnd = 36;
    const std::uint32_t playerCount = body.In.ReadU32();
    const std::uint32_t groupCount = body.In.ReadU32();
    const std::uint32_t entriesAt = body.In.ReadU32();
    body.In.ReadU32(); // entries with shortcuts follow the groups and are not used
    const std::uint32_t descriptionAt = body.In.ReadU32();
    const std::uint32_t nameAt = body.In.ReadU32();
    const std::uint32_t passwordAt = body.In.ReadU32();
    if (body.In.Failed() || descriptionAt < FixedEnd || descriptionAt > body.All.size())
        return false;
    ByteReader descriptionIn(body.All.subspan(descriptionAt));
    const auto description = ReadDescription(descriptionIn);
    if (!description || !ReadOffsetText(body, nameAt, FixedEnd, message.Name) ||
        !ReadOffsetText(body, passwordAt, FixedEnd, message.Password))
        return false;
    message.Description = *description;
    if (playerCount == 0 && groupCount == 0)
        return true;
    if (entriesAt < FixedEnd || entriesAt > body.All.size())
        return false;
    ByteReader entries(body.All.subspan(entriesAt));
    return ReadEntries(entries, playerCount, message.Players, readEntry) &&
           ReadEntries(entries, groupCount, message.Groups, readEntry);
}
} // namespace corvane::directplay
