#pragma once

#include "practice/PhraseTable.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace corvane {
struct PhraseMatch {
    Instruction Means;
    std::size_t End = 0; ///< index of the first word after the phrase
};
/// The longest phrase of the table that begins at a word, where several are equally long the first of them.
/// words  as MeantWords gives them
std::optional<PhraseMatch> LongestPhraseAt(std::span<const std::string> words, std::size_t at);

/// The elements of a wording one by one; the wordings of a phrase likewise.
std::string_view TakeElement(std::string_view& wording) noexcept;
std::string_view TakeWording(std::string_view& wordings) noexcept;
} // namespace corvane
