#pragma once

#include "practice/Instruction.h"

#include <span>
#include <string_view>

namespace corvane {
/// The chapters of the phrase book.
enum class PhraseTopic : std::uint8_t {
    Headings,
    Altitudes,
    Speeds,
    Places,
    Landing,
    Ground,
    Radio,
    Reports,
    Talk,
    Moments
};

/// One thing that can be said, and all that the program knows of it: how it is worded, what it means, how it is read
/// back, and what the phrase book says. The parser, the read-backs and the book are made from this alone.
///
/// Wordings, parted by ";", are words parted by spaces: "a|b" is one of them, "?a" may be left out, "{x}" is a slot,
/// "~" joins what is said as several words and heard as one. Slots:
///   turn        left or right                     altitude  feet or a flight level       speed     30 to 999 knots
///   heading     1 to 360, 0 for 360               course    the same in three figures    degrees   1 to 360
///   place       an airport's or navaid's name     runway    16R, nine left               taxiways  A B3, alpha
///   code        four figures 0 to 7               frequency 118.3                        miles, minutes, number
///   side        north, southeast                  station   seattle tower                details   what needs no
///   answer
/// Read-backs take the same slots, besides: change (climbing), runway with "runway " before it where there is one.
struct Phrase {
    PhraseTopic Topic = PhraseTopic::Talk;
    InstructionKind Kind = InstructionKind::Advice;
    int Variant = 0; ///< Change, Cancels, What, Moment::Kind or 1 for Ils and left, as the kind has it
    std::string_view Wordings;
    std::string_view ReadBack;
    std::string_view Does; ///< for the book
};

/// In the order of the book.
std::span<const Phrase> PhraseTable() noexcept;
} // namespace corvane
