#pragma once

#include <CLI/CLI.hpp>

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace corvane {
/// Numbers separated by a character; nothing unless there are exactly count of them.
std::optional<std::vector<double>> ParseNumbers(std::string_view text, char separator, std::size_t count);

/// Refuses what ParseNumbers cannot read; form shows what is wanted, such as "LAT,LON".
CLI::Validator Numbers(char separator, std::size_t count, const char* form);
} // namespace corvane
