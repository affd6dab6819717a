#pragma once

#include "core/MessageBoxes.h"

namespace corvane {
/// The message boxes as modal Qt dialogs over the active window. Timers go on while one is open.
class QtMessageBoxes final : public MessageBoxes {
public:
    void Show(MessageIcon icon, std::string_view title, std::string_view text) override;
    bool Confirm(std::string_view title, std::string_view text) override;
    std::optional<std::string> AskText(std::string_view title, std::string_view prompt) override;
};
} // namespace corvane
