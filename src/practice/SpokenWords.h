#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// The words of a line in capitals, as they were typed. Commas vanish inside numbers (5,000), points between digits
/// stay (118.3), a minus before a number stays with it; everything else that is no letter or digit parts words, and an
/// apostrophe vanishes.
std::vector<std::string> TypedWords(std::string_view line);

/// The words as they were meant: short forms written out (HDG, TLH), figures for spoken numbers (NINER), one word for
/// TAKE OFF and its like, units parted from their numbers (3000FT).
std::vector<std::string> MeantWords(std::span<const std::string> typed);

/// A number read off words.
struct SpokenNumber {
    std::string Digits; ///< as they were said: 090, not 90
    int Value = 0;
    std::size_t End = 0; ///< index of the first word after it
};
/// The number that begins at a word: figures, single digits that follow one another (2 7 0), TWO FIFTY, ONE HUNDRED.
/// Nothing for other words and for more than six digits.
std::optional<SpokenNumber> NumberAt(std::span<const std::string> words, std::size_t at);

/// The letter that a word of the spelling alphabet, or the letter itself, stands for; 0 for other words.
char LetterOf(std::string_view word) noexcept;
/// A spoken digit (NINER, 4) as a character; 0 for other words.
char DigitOf(std::string_view word) noexcept;
} // namespace corvane
