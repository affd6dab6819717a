#include "traffic/flightgear/Texts.h"

#include "core/Text.h"
#include "traffic/flightgear/Packet.h"

#include <algorithm>
#include <array>

namespace corvane::flightgear {
static bool IsControl(char character) noexcept
{
    const auto code = static_cast<unsigned char>(character);
    return code < 0x20 || code == 0x7F;
}

/// Programs send UTF-8; what is none is taken as it stands.
static std::string FromSent(std::string_view sent)
{
    return IsUtf8(sent) ? Utf8ToWindows1252(sent) : std::string(sent);
}

std::string ShownCallsign(std::string_view sent)
{
    std::string callsign = FromSent(sent);
    std::erase_if(callsign, IsControl);
    return std::string(TrimSpaces(callsign));
}

std::string ShownLine(std::string_view sent)
{
    std::string line = FromSent(sent);
    std::replace_if(line.begin(), line.end(), IsControl, ' ');
    return std::string(TrimSpaces(line));
}

std::string AircraftOfModel(std::string_view path)
{
    constexpr std::array<std::string_view, 3> Endings{".xml", "-model", "-anim"};
    path.remove_prefix(std::min(path.size(), path.find_last_of("/\\") + 1));
    for (const std::string_view ending : Endings)
        if (path.ends_with(ending))
            path.remove_suffix(ending.size());
    return ShownCallsign(path);
}

bool IsControllersModel(std::string_view path) noexcept
{
    return path.find("ATC") != std::string_view::npos || path.find("OpenRadar") != std::string_view::npos;
}

std::string SentCallsign(std::string_view name)
{
    std::string callsign;
    for (const char c : name) {
        const bool fits =
            (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
        if (fits && callsign.size() < CallsignLength)
            callsign.push_back(c);
    }
    return callsign;
}
} // namespace corvane::flightgear
