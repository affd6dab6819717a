#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <span>

namespace corvane {
/// Chance for the practice session: the same numbers for a seed with every standard library, which only the engine
/// itself promises (the library's distributions differ).
class PracticeRandom {
public:
    explicit PracticeRandom(std::uint64_t seed) : m_engine(seed) {}

    /// A number in [0, 1).
    double Fraction() { return static_cast<double>(m_engine() >> 11U) * 0x1p-53; }
    /// A number in [low, high).
    double Between(double low, double high) { return low + (high - low) * Fraction(); }
    /// A whole number in 0 .. count - 1; 0 for a count of 0.
    std::size_t Below(std::size_t count) { return count == 0 ? 0 : static_cast<std::size_t>(m_engine() % count); }
    bool Chance(double probability) { return Fraction() < probability; }

    template <class T> const T& Pick(std::span<const T> choices) { return choices[Below(choices.size())]; }

private:
    std::mt19937_64 m_engine;
};
} // namespace corvane
