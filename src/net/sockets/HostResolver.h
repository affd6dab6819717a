#pragma once

#include "core/Result.h"
#include "net/wire/Protocol.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace corvane::directplay {
/// What is wrong with a text as a host's name or address, in one clause; nothing for what can be looked up.
std::optional<std::string> HostFault(std::string_view host);

/// The IPv4 address of a host given by name or by address. Waits for the name service at most limit, and no longer
/// than keepWaiting, asked about 20 times a second, says so.
Result<std::uint32_t> ResolveHost(const std::string& host, Millis limit, const std::function<bool()>& keepWaiting);
} // namespace corvane::directplay
