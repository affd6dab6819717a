#pragma once

#include "core/Bytes.h"

#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace corvane::directplay {
/// An IPv4 address and port. Ip 0 stands for "any" or "not stated".
struct SocketAddress {
    std::uint32_t Ip = 0; ///< 127.0.0.1 is 0x7F000001
    std::uint16_t Port = 0;

    auto operator<=>(const SocketAddress&) const = default;
};

/// "127.0.0.1"
std::string IpText(std::uint32_t ip);
/// Reads four decimal numbers with dots between them, and nothing else.
std::optional<std::uint32_t> ParseIp(std::string_view text);
/// "127.0.0.1:2300"
std::string AddressText(const SocketAddress& address);
bool IsLoopback(std::uint32_t ip) noexcept;

/// The 16 bytes that a socket address takes in messages: family 2, then port and address in network order.
void WriteSocketAddress(ByteWriter& out, const SocketAddress& address);
/// Nothing when the family is not 2 or bytes are missing.
std::optional<SocketAddress> ReadSocketAddress(ByteReader& in);
} // namespace corvane::directplay
