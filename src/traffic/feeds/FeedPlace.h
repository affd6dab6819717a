#pragma once

#include "core/Result.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace corvane {
enum class FeedKind : std::uint8_t { BaseStation, JsonFile, JsonWeb };

/// Where an aircraft feed comes from. Texts are UTF-8.
struct FeedPlace {
    FeedKind Kind = FeedKind::BaseStation;
    std::string Host;              ///< of BaseStation and JsonWeb: a name or an address, without brackets
    std::uint16_t Port = 0;        ///< of them
    std::string Path;              ///< of JsonWeb, from its "/" on; of JsonFile: the file
    std::string LocalAddress = {}; ///< of this machine, that the connection is made from; empty: any. Is not parsed
    bool operator==(const FeedPlace&) const = default;
};

/// Reads "sbs:HOST[:PORT]", "json:FILE" or "json:http://HOST[:PORT][/PATH]"; ports are 30003 and 80 unless given, an
/// IPv6 address stands in brackets. An Error says what is wrong.
Result<FeedPlace> ParseFeedPlace(std::string_view text);
/// The same for what somebody types who was asked for an address: "HOST", "HOST:PORT" and "http://..." need no prefix,
/// and a text with a slash or ending in ".json" is a file.
Result<FeedPlace> ParseTypedFeedPlace(std::string_view text);
/// "192.168.1.7:30003", the web address, or the file.
std::string FeedPlaceText(const FeedPlace& place);

/// "HOST:PORT" of a TCP service; the port may be left out where there is a usual one (0: there is none).
Result<FeedPlace> ParseHostAndPort(std::string_view text, std::uint16_t usualPort);
} // namespace corvane
