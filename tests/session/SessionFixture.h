#pragma once

#include "core/MessageBoxes.h"
#include "session/SessionState.h"
#include "tests/session/FailingPeers.h"
#include "tests/session/Member.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// Answers message boxes from a script and writes down what they said, each with its icon: "i", "w" or "c".
class ScriptedBoxes final : public MessageBoxes {
public:
    void Show(MessageIcon icon, std::string_view title, std::string_view text) override
    {
        EXPECT_EQ(title, MessageTitle);
        constexpr std::string_view Icons = "iwc";
        Shown.push_back(std::string(1, Icons[static_cast<std::size_t>(icon)]) + ": " + std::string(text));
        if (WhileOpen)
            WhileOpen();
    }
    bool Confirm(std::string_view /*title*/, std::string_view /*text*/) override { return true; }
    std::optional<std::string> AskText(std::string_view title, std::string_view prompt) override
    {
        Show(MessageIcon::Information, title, prompt);
        return Answer;
    }

    std::vector<std::string> Shown;
    std::optional<std::string> Answer; ///< to the next question; nothing cancels it
    std::function<void()> WhileOpen;
};
} // namespace corvane
