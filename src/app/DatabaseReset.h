#pragma once

#include "core/MessageBoxes.h"

namespace corvane {
struct AppState;

/// "Create new database files": asks, then deletes the data files and leaves the session.
/// Returns  true when the user agreed, and has been told that the program ends; false changes nothing
bool CreateNewDatabaseFiles(AppState& state, MessageBoxes& boxes);
} // namespace corvane
