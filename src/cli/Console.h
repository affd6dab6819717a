#pragma once

#include <iosfwd>
#include <string_view>

namespace corvane {
/// What a command line talks to. Results alone go to Out; notices, progress and errors go to Notices.
struct Console {
    std::istream& In;
    std::ostream& Out;
    std::ostream& Notices;
    bool NoticesOnTerminal = false; ///< a progress bar is drawn only on a terminal
    int LiveInput = -1;             ///< descriptor of the input that is followed while it is written; below 0: none
};

/// Prints "corvane-cli: text" as one line of notices; text is UTF-8 and may hold anything that came from outside.
void PrintNotice(const Console& console, std::string_view text);
/// Prints a text of several lines as notices, what is in each made safe to show.
void PrintNoticeLines(const Console& console, std::string_view text);
} // namespace corvane
