#include "net/wire/WireRecords.h"

#include "net/wire/WireText.h"

namespace corvane::directplay {
static constexpr std::uint32_t FixedSize = 48;
static constexpr std::uint32_t SuperFixedSize = 16;

void WriteDescription(ByteWriter& out, const SessionDescription& description)
{
    out.WriteU32(DescriptionSize);
    out.WriteU32(description.Flags);
    WriteGuid(out, description.Instance);
    WriteGuid(out, description.Application);
    out.WriteU32(description.MaxPlayers);
    out.WriteU32(description.CurrentPlayers);
    out.WriteZeros(8); // places of name and password, which travel elsewhere
    out.WriteU32(description.IdKey);
    out.WriteU32(0);
    for (const std::uint32_t value : description.ApplicationDefined)
        out.WriteU32(value);
}

std::optional<SessionDescription> ReadDescription(ByteReader& in)
{
    SessionDescription description;
    const std::uint32_t size = in.ReadU32();
    description.Flags = in.ReadU32();
    description.Instance = ReadGuid(in);
    description.Application = ReadGuid(in);
    description.MaxPlayers = in.ReadU32();
    description.CurrentPlayers = in.ReadU32();
    in.ReadBytes(8);
    description.IdKey = in.ReadU32();
    in.ReadU32();
    for (std::uint32_t& value : description.ApplicationDefined)
        value = in.ReadU32();
    if (in.Failed() || size != DescriptionSize)
        return std::nullopt;
    return description;
}

void WriteServiceData(ByteWriter& out, const ServiceData& service)
{
    WriteSocketAddress(out, service.Stream);
    WriteSocketAddress(out, service.Datagram);
}

std::optional<ServiceData> ReadServiceData(ByteSpan bytes)
{
    if (bytes.size() != ServiceDataSize)
        return std::nullopt;
    ByteReader in(bytes);
    const auto stream = ReadSocketAddress(in);
    const auto datagram = ReadSocketAddress(in);
    if (!stream || !datagram)
        return std::nullopt;
    return ServiceData{*stream, *datagram};
}

static std::uint32_t NameLength(std::u16string_view name)
{
    return name.empty() ? 0 : static_cast<std::uint32_t>(WideTextSize(name));
}

static void WriteName(ByteWriter& out, std::u16string_view name)
{
    if (!name.empty())
        WriteWideText(out, name);
}

std::size_t PackedPlayerSize(const PackedPlayer& player) noexcept
{
    return FixedSize + NameLength(player.ShortName) + NameLength(player.LongName) +
           (player.Service ? ServiceDataSize : 0) + player.Data.size() + 4 * player.Members.size();
}

void WritePackedPlayer(ByteWriter& out, const PackedPlayer& player)
{
    // The documented sum of the size field leaves the members out.
    out.WriteU32(static_cast<std::uint32_t>(PackedPlayerSize(player) - 4 * player.Members.size()));
    out.WriteU32(player.Flags);
    out.WriteU32(player.Id);
    out.WriteU32(NameLength(player.ShortName));
    out.WriteU32(NameLength(player.LongName));
    out.WriteU32(player.Service ? ServiceDataSize : 0);
    out.WriteU32(static_cast<std::uint32_t>(player.Data.size()));
    out.WriteU32(static_cast<std::uint32_t>(player.Members.size()));
    out.WriteU32(player.SystemId);
    out.WriteU32(FixedSize);
    out.WriteU32(player.Version);
    out.WriteU32(player.Parent);
    WriteName(out, player.ShortName);
    WriteName(out, player.LongName);
    if (player.Service)
        WriteServiceData(out, *player.Service);
    out.WriteBytes(player.Data);
    for (const WireId member : player.Members)
        out.WriteU32(member);
}

/// A name of a stated length, its zero included: the zero must be there, and stand at the end or before it.
static std::optional<std::u16string> ReadNameOfLength(ByteReader& in, std::uint32_t length)
{
    if (length == 0)
        return std::u16string();
    if (length % 2 != 0)
        return std::nullopt;
    const ByteSpan bytes = in.ReadBytes(length);
    if (in.Failed())
        return std::nullopt;
    return ReadWideTextAt(bytes, 0);
}

static std::optional<std::vector<WireId>> ReadIds(ByteReader& in, std::uint32_t count)
{
    if (count > in.Left() / 4 || count > MaxPlayers)
        return std::nullopt;
    std::vector<WireId> ids(count);
    for (WireId& id : ids)
        id = in.ReadU32();
    return ids;
}

std::optional<PackedPlayer> ReadPackedPlayer(ByteReader& in)
{
    PackedPlayer player;
    in.ReadU32(); // the size: machines differ in what they count, and the lengths below say it all
    player.Flags = in.ReadU32();
    player.Id = in.ReadU32();
    const std::uint32_t shortLength = in.ReadU32();
    const std::uint32_t longLength = in.ReadU32();
    const std::uint32_t serviceLength = in.ReadU32();
    const std::uint32_t dataLength = in.ReadU32();
    const std::uint32_t memberCount = in.ReadU32();
    player.SystemId = in.ReadU32();
    const std::uint32_t fixedSize = in.ReadU32();
    player.Version = in.ReadU32();
    player.Parent = in.ReadU32();
    if (in.Failed() || fixedSize != FixedSize || dataLength > MaxRecordData)
        return std::nullopt;
    auto shortName = ReadNameOfLength(in, shortLength);
    auto longName = shortName ? ReadNameOfLength(in, longLength) : std::nullopt;
    if (!longName)
        return std::nullopt;
    player.Service = ReadServiceData(in.ReadBytes(serviceLength));
    const ByteSpan data = in.ReadBytes(dataLength);
    auto members = ReadIds(in, memberCount);
    if (in.Failed() || !members)
        return std::nullopt;
    player.ShortName = std::move(*shortName);
    player.LongName = std::move(*longName);
    player.Data.assign(data.begin(), data.end());
    player.Members = std::move(*members);
    return player;
}

// Places of the fields in the mask of a super packed player. Lengths and counts have a two-bit code: absent, one
// byte, two bytes, four bytes.
static constexpr unsigned ShortNameBit = 0;
static constexpr unsigned LongNameBit = 1;
static constexpr unsigned ServiceShift = 2;
static constexpr unsigned DataShift = 4;
static constexpr unsigned MembersShift = 6;
static constexpr unsigned ParentBit = 8;
static constexpr unsigned ShortcutsShift = 9;

static std::uint32_t SizeCode(std::size_t value)
{
    if (value == 0)
        return 0;
    return value < 256 ? 1 : value < 65536 ? 2 : 3;
}

static void WriteSized(ByteWriter& out, std::size_t value)
{
    switch (SizeCode(value)) {
    case 1: out.WriteU8(static_cast<std::uint8_t>(value)); break;
    case 2: out.WriteU16(static_cast<std::uint16_t>(value)); break;
    case 3: out.WriteU32(static_cast<std::uint32_t>(value)); break;
    default: break;
    }
}

static std::uint32_t ReadSized(ByteReader& in, std::uint32_t mask, unsigned shift)
{
    switch ((mask >> shift) & 3) {
    case 1: return in.ReadU8();
    case 2: return in.ReadU16();
    case 3: return in.ReadU32();
    default: return 0;
    }
}

void WriteSuperPackedPlayer(ByteWriter& out, const SuperPackedPlayer& player)
{
    std::uint32_t mask = 0;
    mask |= player.ShortName.empty() ? 0U : 1U << ShortNameBit;
    mask |= player.LongName.empty() ? 0U : 1U << LongNameBit;
    mask |= SizeCode(player.Service ? ServiceDataSize : 0) << ServiceShift;
    mask |= SizeCode(player.Data.size()) << DataShift;
    mask |= SizeCode(player.Members.size()) << MembersShift;
    mask |= player.Parent == 0 ? 0U : 1U << ParentBit;
    out.WriteU32(SuperFixedSize);
    out.WriteU32(player.Flags);
    out.WriteU32(player.Id);
    out.WriteU32(mask);
    out.WriteU32(player.VersionOrSystemId);
    WriteName(out, player.ShortName);
    WriteName(out, player.LongName);
    WriteSized(out, player.Data.size());
    out.WriteBytes(player.Data);
    if (player.Service) {
        WriteSized(out, ServiceDataSize);
        WriteServiceData(out, *player.Service);
    }
    WriteSized(out, player.Members.size());
    for (const WireId member : player.Members)
        out.WriteU32(member);
    if (player.Parent != 0)
        out.WriteU32(player.Parent);
}

static bool ReadNameIf(ByteReader& in, bool present, std::u16string& name)
{
    if (!present)
        return true;
    auto text = ReadWideText(in);
    if (!text)
        return false;
    name = std::move(*text);
    return true;
}

std::optional<SuperPackedPlayer> ReadSuperPackedPlayer(ByteReader& in)
{
    SuperPackedPlayer player;
    const std::uint32_t size = in.ReadU32();
    player.Flags = in.ReadU32();
    player.Id = in.ReadU32();
    const std::uint32_t mask = in.ReadU32();
    player.VersionOrSystemId = in.ReadU32();
    if (in.Failed() || size != SuperFixedSize || !ReadNameIf(in, (mask >> ShortNameBit & 1) != 0, player.ShortName) ||
        !ReadNameIf(in, (mask >> LongNameBit & 1) != 0, player.LongName))
        return std::nullopt;
    const std::uint32_t dataLength = ReadSized(in, mask, DataShift);
    const ByteSpan data = in.ReadBytes(dataLength);
    const std::uint32_t serviceLength = ReadSized(in, mask, ServiceShift);
    player.Service = ReadServiceData(in.ReadBytes(serviceLength));
    auto members = ReadIds(in, ReadSized(in, mask, MembersShift));
    if (in.Failed() || !members || dataLength > MaxRecordData)
        return std::nullopt;
    if ((mask >> ParentBit & 1) != 0)
        player.Parent = in.ReadU32();
    const auto shortcuts = ReadIds(in, ReadSized(in, mask, ShortcutsShift)); // groups within groups are not used
    if (in.Failed() || !shortcuts)
        return std::nullopt;
    player.Data.assign(data.begin(), data.end());
    player.Members = std::move(*members);
    return player;
}
} // namespace corvane::directplay
