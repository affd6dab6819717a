#include "cli/Json.h"

namespace corvane {
std::string ToLine(const Json& value)
{
    const std::string dumped = value.dump(-1, ' ', false, Json::error_handler_t::replace);
    std::string line;
    line.reserve(dumped.size());
    constexpr char FirstOfTwo = '\xC2'; // before U+0080 to U+00BF
    for (std::size_t i = 0; i < dumped.size(); ++i) {
        const auto next = i + 1 < dumped.size() ? static_cast<unsigned char>(dumped[i + 1]) : 0U;
        const bool high = dumped[i] == FirstOfTwo && next >= 0x80 && next < 0xA0;
        if (high)
            ++i;
        if (high || dumped[i] == '\x7F') {
            line += "\\u00";
            line += high ? "89"[(next >> 4U) - 8] : '7';
            line += "0123456789abcdef"[high ? next & 0xFU : 0xFU];
        } else {
            line += dumped[i];
        }
    }
    return line;
}
} // namespace corvane
