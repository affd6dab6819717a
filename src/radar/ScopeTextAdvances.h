#pragma once

#include <array>
#include <cstdint>

namespace corvane {
/// How far the scope's typeface advances for each Windows-1252 character, in pixels: for whoever lays texts out where
/// no font is at hand. Characters stand side by side at whole pixels, so a text is as wide as their sum.
inline constexpr std::array<std::uint8_t, 256> ScopeTextAdvances = {
    0,  0, 0, 0, 0, 0,  0,  0, 0, 0,  0, 0, 0,  0,  0,  0, 0, 0, 0, 0, 0, 0, 0, 0,  0, 0,  0, 0, 0,  0,  0,  0,
    4,  4, 5, 9, 7, 10, 9,  3, 4, 4,  6, 9, 4,  4,  4,  4, 7, 7, 7, 7, 7, 7, 7, 7,  7, 7,  4, 4, 9,  9,  9,  6,
    11, 8, 8, 8, 8, 7,  6,  9, 8, 3,  3, 7, 6,  9,  8,  9, 7, 9, 8, 7, 7, 8, 8, 11, 8, 7,  8, 4, 4,  4,  9,  6,
    6,  7, 7, 6, 7, 7,  4,  7, 7, 3,  3, 6, 3,  11, 7,  7, 7, 7, 5, 6, 4, 7, 7, 9,  7, 7,  6, 7, 4,  7,  9,  0,
    7,  0, 4, 4, 6, 11, 6,  6, 6, 15, 7, 4, 12, 0,  8,  0, 0, 4, 4, 6, 6, 6, 6, 11, 6, 11, 6, 4, 11, 0,  6,  7,
    4,  4, 7, 7, 7, 7,  4,  6, 6, 11, 5, 7, 9,  0,  11, 6, 6, 9, 4, 4, 6, 7, 7, 4,  6, 4,  5, 7, 11, 11, 11, 6,
    8,  8, 8, 8, 8, 8,  11, 8, 7, 7,  7, 7, 3,  3,  3,  3, 9, 8, 9, 9, 9, 9, 9, 9,  9, 8,  8, 8, 8,  7,  7,  7,
    7,  7, 7, 7, 7, 7,  11, 6, 7, 7,  7, 7, 3,  3,  3,  3, 7, 7, 7, 7, 7, 7, 7, 9,  7, 7,  7, 7, 7,  7,  7,  7};
} // namespace corvane
