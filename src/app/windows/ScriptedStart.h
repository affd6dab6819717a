#pragma once

#include "core/MessageBoxes.h"
#include "practice/PracticeScenario.h"

#include <QString>

#include <optional>
#include <string>

namespace corvane {
/// What the command line asks to be done as if a person had pressed the buttons.
struct ScriptedStart {
    std::string Airport;                      ///< ICAO code to choose in the area chooser; empty: the person chooses
    bool Practice = false;                    ///< join the practice session
    std::optional<PracticeScenario> Scenario; ///< of the practice session
    QString Screenshot;      ///< save the main window's picture here once targets have moved, and end; empty: go on
    bool FirstStart = false; ///< delete the settings first, so that the program begins with the set-up

    /// Nobody sits before the screen: message boxes must not wait.
    [[nodiscard]] bool Unattended() const { return !Screenshot.isEmpty(); }
};

/// Presses OK on the information boxes of the join that the script makes; other boxes wait for the person, unless there
/// is none. A join that fails is the script's last.
class ScriptedBoxes final : public MessageBoxes {
public:
    ScriptedBoxes(MessageBoxes& shown, const ScriptedStart& script) noexcept
        : m_shown(shown), m_unattended(script.Unattended())
    {
    }

    void JoinBegins() noexcept { m_pressing = true; }
    void JoinEnds() noexcept { m_pressing = false; }

    void Show(MessageIcon icon, std::string_view title, std::string_view text) override;
    bool Confirm(std::string_view title, std::string_view text) override;
    std::optional<std::string> AskText(std::string_view title, std::string_view prompt) override;

private:
    MessageBoxes& m_shown;
    bool m_pressing = false;
    bool m_unattended;
};
} // namespace corvane
