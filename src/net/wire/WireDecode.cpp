#include "net/wire/WireDecode.h"

#include "net/wire/WireBodies.h"

namespace corvane::directplay {
static constexpr std::uint32_t SizeMask = 0x000FFFFF;

static bool IsToken(std::uint32_t token) noexcept
{
    return token == TokenRemote || token == TokenRelayed || token == TokenForward;
}

std::variant<std::uint32_t, DropReason> CheckFirstWord(std::uint32_t word)
{
    const std::uint32_t size = word & SizeMask;
    if (!IsToken(word >> 20))
        return DropReason::BadMagic;
    if (size < PrefixSize)
        return DropReason::Truncated;
    if (size > MaxMessageSize)
        return DropReason::Oversized;
    return size;
}

std::variant<Prefix, DropReason> DecodePrefix(ByteSpan packet)
{
    if (packet.size() < PrefixSize)
        return DropReason::Truncated;
    ByteReader in(packet);
    Prefix prefix;
    const std::uint32_t word = in.ReadU32();
    const auto size = CheckFirstWord(word);
    if (const auto* reason = std::get_if<DropReason>(&size))
        return *reason;
    prefix.Size = std::get<std::uint32_t>(size);
    prefix.Token = word >> 20;
    if (prefix.Size != packet.size())
        return prefix.Size > packet.size() ? DropReason::Truncated : DropReason::Oversized;
    const auto stated = ReadSocketAddress(in);
    if (!stated)
        return DropReason::BadMagic;
    prefix.Stated = *stated;
    return prefix;
}

bool IsManagement(ByteSpan packet) noexcept
{
    return packet.size() >= HeaderSize && ByteReader(packet.subspan(PrefixSize)).ReadU32() == Signature;
}

std::variant<Management, DropReason> DecodeManagement(ByteSpan bare)
{
    ByteReader in(bare);
    const std::uint32_t signature = in.ReadU32();
    const auto command = static_cast<Command>(in.ReadU16());
    const std::uint16_t version = in.ReadU16();
    if (in.Failed())
        return DropReason::Truncated;
    if (signature != Signature)
        return DropReason::BadMagic;
    if (version < LowestVersion)
        return DropReason::WrongVersion;
    return DecodeBody(command, bare, version > OwnVersion ? OwnVersion : version);
}

std::variant<PlayerMessage, DropReason> DecodePlayerMessage(ByteSpan bare, bool withIds)
{
    if (!withIds)
        return PlayerMessage{UnknownPlayer, EveryPlayer, bare};
    ByteReader in(bare);
    PlayerMessage message;
    message.From = in.ReadU32();
    message.To = in.ReadU32();
    if (in.Failed())
        return DropReason::Truncated;
    message.Payload = in.ReadBytes(in.Left());
    return message;
}

ByteSpan UnwrapPlayerMessage(ByteSpan content) noexcept
{
    if (content.size() < PrefixSize)
        return content;
    const std::uint32_t word = ByteReader(content).ReadU32();
    const bool prefixed = IsToken(word >> 20) && (word & SizeMask) == content.size();
    return prefixed ? content.subspan(PrefixSize) : content;
}
} // namespace corvane::directplay
