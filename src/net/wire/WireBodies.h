#pragma once

#include "net/wire/DropReason.h"
#include "net/wire/WireMessages.h"

namespace corvane::directplay {
/// Reads what stands behind the signature, command and version of a management message. bare starts at the signature,
/// as all offsets inside do.
std::variant<Management, DropReason> DecodeBody(Command command, ByteSpan bare, std::uint16_t version);
} // namespace corvane::directplay
