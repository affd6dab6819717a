#pragma once

#include "practice/Instruction.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// One way to read a slot: what it makes of the instruction, and the index of the first word after it.
struct SlotReading {
    Instruction Means;
    std::size_t End = 0;
};
/// Every way in which the words from one on fill a slot of PhraseTable; none where they do not.
std::vector<SlotReading> ReadSlot(std::string_view slot, std::span<const std::string> words, std::size_t at,
                                  const Instruction& sofar);
} // namespace corvane
