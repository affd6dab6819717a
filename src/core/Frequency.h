#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace corvane {
/// A whole number of ten-thousandths as its shortest decimal text: 1181000 gives "118.1", 0 gives "0".
std::string TenThousandthsText(std::int64_t value);

/// The decimal text of a binary-coded frequency: the hexadecimal digits of word read as a decimal number of
/// ten-thousandths of a megahertz, so 0x01181000 gives "118.1". Nothing where a digit is above 9.
std::optional<std::string> BcdFrequency(std::int32_t word);
} // namespace corvane
