#pragma once

#include "practice/Instruction.h"

#include <string>
#include <string_view>

namespace corvane {
/// The read-back of an instruction, in the words of its phrase, with its conditions.
/// change  the word for an altitude's change, such as "climbing"
std::string ReadBackOf(const Instruction& instruction, std::string_view change = {});
} // namespace corvane
