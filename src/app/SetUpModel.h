#pragma once

#include "core/MessageBoxes.h"

#include <string>
#include <string_view>

namespace corvane {
struct AppState;

/// The logic of the set-up window, which asks for the simulator's folder and writes the first settings.
/// Paths are UTF-8 as typed; files are found below them in any letter case.
class SetUpModel {
public:
    SetUpModel(AppState& state, MessageBoxes& boxes) noexcept : m_state(state), m_boxes(boxes) {}

    /// What the path box holds after a change to text: a text of exactly 3 characters, such as "C:\", loses its
    /// separators. Other texts stay, and so does one that begins with a separator: the start of a path on a system
    /// without drives, which people type letter by letter.
    static std::string PathAfterChange(std::string_view text);

    /// "Microsoft Flight Simulator 2002" was clicked.
    void OptionClicked() noexcept;

    /// "NEXT STEP --->". True when the settings are written: the window closes and the database is built. Otherwise the
    /// user has been told why, and the window stays.
    bool NextStep(std::string_view path, bool fs2002Selected);

    /// The window closes. True when the set-up was not finished: its files are gone, the user has been told, and the
    /// program ends.
    bool Close();

private:
    AppState& m_state;
    MessageBoxes& m_boxes;
    bool m_setupFinished = false;
};
} // namespace corvane
