#include "traffic/feeds/FeedPlace.h"

#include "core/Text.h"
#include "traffic/feeds/BaseStationText.h"

#include <algorithm>
#include <charconv>

namespace corvane {
static constexpr std::string_view SbsPrefix = "sbs:";
static constexpr std::string_view JsonPrefix = "json:";
static constexpr std::string_view WebPrefix = "http://";
static constexpr std::string_view SecureWebPrefix = "https://";
static constexpr std::uint16_t WebPort = 80;

static Error NotAPlace(std::string_view text, const char* why)
{
    return Fail('"' + std::string(text) + '"', why);
}

/// Whether a text can stand in a request or a look-up: printable ASCII without blanks.
static bool IsPlain(std::string_view text)
{
    return std::ranges::all_of(text, [](char c) { return c > ' ' && c <= '~'; });
}

static std::uint16_t PortOf(std::string_view text)
{
    std::uint16_t port = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), port);
    return read.ec == std::errc() && read.ptr == text.data() + text.size() ? port : std::uint16_t{0};
}

Result<FeedPlace> ParseHostAndPort(std::string_view text, std::uint16_t usualPort)
{
    const bool bracketed = text.starts_with('[');
    const std::size_t hostEnd = bracketed ? text.find(']') : text.rfind(':');
    FeedPlace place;
    place.Host =
        bracketed ? text.substr(1, hostEnd == std::string_view::npos ? hostEnd : hostEnd - 1) : text.substr(0, hostEnd);
    place.Port = usualPort;
    std::string_view rest = hostEnd == std::string_view::npos ? "" : text.substr(hostEnd + (bracketed ? 1 : 0));
    if (rest.starts_with(':')) {
        place.Port = PortOf(rest.substr(1));
        rest = "";
    }
    if (place.Host.empty() || !IsPlain(place.Host) || !rest.empty() || (bracketed && hostEnd == std::string_view::npos))
        return NotAPlace(text, "is no name or address of a host");
    if (!bracketed && place.Host.find(':') != std::string::npos)
        return NotAPlace(text, "needs brackets around its address");
    if (place.Port == 0)
        return NotAPlace(text, "has no port from 1 to 65535");
    return place;
}

static Result<FeedPlace> ParseWebPlace(std::string_view text)
{
    const std::string_view rest = text.substr(WebPrefix.size());
    const std::size_t slash = std::min(rest.find('/'), rest.size());
    auto place = ParseHostAndPort(rest.substr(0, slash), WebPort);
    if (!place)
        return place;
    place->Kind = FeedKind::JsonWeb;
    place->Path = slash == rest.size() ? "/" : rest.substr(slash);
    if (!IsPlain(place->Path))
        return NotAPlace(text, "holds blanks or other characters that a web address cannot have");
    return place;
}

Result<FeedPlace> ParseFeedPlace(std::string_view text)
{
    if (text.starts_with(SbsPrefix))
        return ParseHostAndPort(text.substr(SbsPrefix.size()), BaseStationPort);
    if (!text.starts_with(JsonPrefix))
        return NotAPlace(text, "must have the form sbs:HOST:PORT, json:FILE or json:http://HOST[:PORT]/PATH");
    const std::string_view rest = text.substr(JsonPrefix.size());
    if (ToLower(rest).starts_with(WebPrefix))
        return ParseWebPlace(rest);
    if (ToLower(rest).starts_with(SecureWebPrefix))
        return NotAPlace(text, "cannot be read: only http:// is");
    if (rest.empty() || rest.find('\0') != std::string_view::npos)
        return NotAPlace(text, "names no file");
    FeedPlace place;
    place.Kind = FeedKind::JsonFile;
    place.Path = rest;
    return place;
}

Result<FeedPlace> ParseTypedFeedPlace(std::string_view text)
{
    text = TrimSpaces(text);
    if (text.starts_with(SbsPrefix) || text.starts_with(JsonPrefix))
        return ParseFeedPlace(text);
    const bool isJson = text.find('/') != std::string_view::npos || ToLower(text).ends_with(".json");
    return ParseFeedPlace(std::string(isJson ? JsonPrefix : SbsPrefix).append(text));
}

std::string FeedPlaceText(const FeedPlace& place)
{
    if (place.Kind == FeedKind::JsonFile)
        return place.Path;
    const bool bracketed = place.Host.find(':') != std::string::npos;
    const std::string host = bracketed ? '[' + place.Host + ']' : place.Host;
    const std::string service = host + ':' + std::to_string(place.Port);
    return place.Kind == FeedKind::JsonWeb ? std::string(WebPrefix) + service + place.Path : service;
}
} // namespace corvane
