#pragma once

#include "net/wire/WireMessages.h"

namespace corvane::directplay {
/// A management message as it goes onto a socket. streamPort is the sender's own stream port, which the prefix
/// states; LoginFailed and IgnoredMessage are never sent and give an empty result.
Bytes EncodeMessage(const WireMessage& message, std::uint16_t streamPort);

/// A player message: the payload behind the prefix and, unless withIds is false, both ids. One that a receiver would
/// take for a management message is wrapped.
Bytes EncodePlayerMessage(WireId from, WireId to, ByteSpan payload, std::uint16_t streamPort, bool withIds = true);
} // namespace corvane::directplay
