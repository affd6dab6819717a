#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// In the folder of a database that was made of open data: where the data come from, and what they say of themselves.
inline constexpr std::string_view CreditsFileName = "world_credits.txt";

struct SourceCredit {
    std::string File;                 ///< full name, UTF-8
    std::vector<std::string> Remarks; ///< what the file says of its origin and licence, UTF-8
};

/// The content of the file: UTF-8, lines ending in LF.
std::string CreditsText(std::span<const SourceCredit> sources);
} // namespace corvane
