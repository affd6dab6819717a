#pragma once

#include <optional>
#include <string>

namespace corvane {
class DeskSettings;

/// Asks at which machine sessions are looked for: a name or an address, or an empty text for the local network. Offers
/// the answer of the last time. Nothing when the user leaves it.
std::optional<std::string> AskHostAddress(DeskSettings& desk);
} // namespace corvane
