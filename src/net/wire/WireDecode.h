#pragma once

#include "net/wire/DropReason.h"
#include "net/wire/WireMessages.h"

namespace corvane::directplay {
/// The first 20 bytes of every message.
struct Prefix {
    std::uint32_t Size = 0;
    std::uint32_t Token = 0;
    SocketAddress Stated; ///< the sender's stream port, as it says; the address is mostly 0
};

/// What a player message says, with its payload borrowed from the packet.
struct PlayerMessage {
    WireId From = UnknownPlayer;
    WireId To = EveryPlayer;
    ByteSpan Payload;
};

/// Checks the first word of a message: its size in bytes, or why there cannot be a message.
std::variant<std::uint32_t, DropReason> CheckFirstWord(std::uint32_t word);

/// The prefix of a whole message; the size must be that of packet.
std::variant<Prefix, DropReason> DecodePrefix(ByteSpan packet);

/// True when a whole message is a management message rather than a player message.
bool IsManagement(ByteSpan packet) noexcept;

/// Takes a management message apart. bare starts at the signature, as all offsets inside do.
std::variant<Management, DropReason> DecodeManagement(ByteSpan bare);

/// Takes a player message apart. bare starts behind the prefix; without ids all of it is payload.
std::variant<PlayerMessage, DropReason> DecodePlayerMessage(ByteSpan bare, bool withIds);

/// What a PlayerWrapper holds, whether or not its sender left a prefix in front.
ByteSpan UnwrapPlayerMessage(ByteSpan content) noexcept;
} // namespace corvane::directplay
