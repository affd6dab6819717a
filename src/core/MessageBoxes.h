#pragma once

#include "core/Result.h"
#include "core/Text.h"

#include <optional>
#include <string>
#include <string_view>

namespace corvane {
inline constexpr std::string_view MessageTitle = "Corvane Message";

enum class MessageIcon { Information, Warning, Critical };

/// The message boxes of the program, as calls that a window answers in the program and a script in the tests.
/// Texts are 8-bit Windows-1252. Every call returns when the user has closed the box.
class MessageBoxes {
public:
    virtual ~MessageBoxes() = default;

    virtual void Show(MessageIcon icon, std::string_view title, std::string_view text) = 0;
    /// OK and Cancel; true for OK.
    virtual bool Confirm(std::string_view title, std::string_view text) = 0;
    /// The text entered, or nothing when the box was cancelled.
    virtual std::optional<std::string> AskText(std::string_view title, std::string_view prompt) = 0;

    void Inform(std::string_view text) { Show(MessageIcon::Information, MessageTitle, text); }
    void Warn(std::string_view text) { Show(MessageIcon::Warning, MessageTitle, text); }
};

/// A failure as a box shows it. Errors name paths in UTF-8; boxes take Windows-1252.
inline std::string BoxText(const Error& error)
{
    return Utf8ToWindows1252(error.Text());
}
} // namespace corvane
