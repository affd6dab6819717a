#include "cli/Console.h"

#include "core/Text.h"

#include <algorithm>
#include <ostream>

namespace corvane {
void PrintNotice(const Console& console, std::string_view text)
{
    console.Notices << "corvane-cli: " << TerminalText(text) << '\n';
}

void PrintNoticeLines(const Console& console, std::string_view text)
{
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        console.Notices << TerminalText(text.substr(0, end)) << '\n';
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}
} // namespace corvane
