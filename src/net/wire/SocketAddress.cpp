#include "net/wire/SocketAddress.h"

#include <charconv>

namespace corvane::directplay {
static constexpr std::uint16_t FamilyInternet = 2;

std::string IpText(std::uint32_t ip)
{
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        text += std::to_string((ip >> shift) & 0xFF);
        if (shift > 0)
            text += '.';
    }
    return text;
}

std::optional<std::uint32_t> ParseIp(std::string_view text)
{
    std::uint32_t ip = 0;
    const char* at = text.data();
    const char* const end = at + text.size();
    for (int part = 0; part < 4; ++part) {
        std::uint8_t value = 0;
        const auto read = std::from_chars(at, end, value);
        if (read.ec != std::errc{})
            return std::nullopt;
        ip = (ip << 8) | value;
        at = read.ptr;
        if (part < 3 && (at == end || *at++ != '.'))
            return std::nullopt;
    }
    if (at != end)
        return std::nullopt;
    return ip;
}

std::string AddressText(const SocketAddress& address)
{
    return IpText(address.Ip) + ":" + std::to_string(address.Port);
}

bool IsLoopback(std::uint32_t ip) noexcept
{
    return ip >> 24 == 127;
}

void WriteSocketAddress(ByteWriter& out, const SocketAddress& address)
{
    out.WriteU16(FamilyInternet);
    out.WriteU8(static_cast<std::uint8_t>(address.Port >> 8));
    out.WriteU8(static_cast<std::uint8_t>(address.Port & 0xFF));
    for (int shift = 24; shift >= 0; shift -= 8)
        out.WriteU8(static_cast<std::uint8_t>(address.Ip >> shift));
    out.WriteZeros(8);
}

static std::uint32_t ReadBigEndian(ByteReader& in, int count)
{
    std::uint32_t value = 0;
    for (int i = 0; i < count; ++i)
        value = (value << 8) | in.ReadU8();
    return value;
}

std::optional<SocketAddress> ReadSocketAddress(ByteReader& in)
{
    const std::uint16_t family = in.ReadU16();
    SocketAddress address;
    address.Port = static_cast<std::uint16_t>(ReadBigEndian(in, 2));
    address.Ip = ReadBigEndian(in, 4);
    in.ReadBytes(8);
    if (in.Failed() || family != FamilyInternet)
        return std::nullopt;
    return address;
}
} // namespace corvane::directplay
