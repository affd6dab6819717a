#pragma once

#include <iosfwd>

namespace corvane {
/// What a command line talks to. Results alone go to Out; notices, progress and errors go to Notices.
struct Console {
    std::istream& In;
    std::ostream& Out;
    std::ostream& Notices;
    bool NoticesOnTerminal = false; ///< a progress bar is drawn only on a terminal
    int LiveInput = -1;             ///< descriptor of the input that is followed while it is written; below 0: none
};
} // namespace corvane
