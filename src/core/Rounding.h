#pragma once

#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>
#include <optional>

namespace corvane {
/// The one rounding rule of the program: to the nearest whole number, halves to the even one.
/// Relies on the default floating-point rounding mode, which nothing in the program changes.
inline double RoundHalfEven(double value) noexcept
{
    return std::nearbyint(value);
}

/// The whole number nearest to value (halves to even), or nothing where it does not fit T or value is not a number.
template <std::signed_integral T> std::optional<T> RoundChecked(double value) noexcept
{
    static_assert(sizeof(T) <= sizeof(std::int32_t), "the limit below must leave room for rounding");
    constexpr double FarOut = 1e10;
    if (!(value > -FarOut && value < FarOut))
        return std::nullopt;
    const long long rounded = std::llrint(value); // one instruction, unlike std::nearbyint
    if (rounded < std::numeric_limits<T>::min() || rounded > std::numeric_limits<T>::max())
        return std::nullopt;
    return static_cast<T>(rounded);
}

/// The whole number nearest to value (halves to even), held to the range of T; 0 where value is not a number.
template <std::signed_integral T> T RoundTo(double value) noexcept
{
    static_assert(sizeof(T) <= sizeof(std::int32_t), "the limits below must be exact doubles");
    constexpr double Lowest = std::numeric_limits<T>::min();
    constexpr double Highest = std::numeric_limits<T>::max();
    if (value >= Lowest && value <= Highest)
        return static_cast<T>(std::llrint(value));
    if (value > Highest)
        return std::numeric_limits<T>::max();
    return value < Lowest ? std::numeric_limits<T>::min() : T{0};
}

/// Rounds to decimal places (halves to even): scales, rounds, divides, so that equal inputs give equal digits.
inline double RoundToFourPlaces(double value) noexcept
{
    return RoundHalfEven(value * 10000.0) / 10000.0;
}
inline double RoundToFivePlaces(double value) noexcept
{
    return RoundHalfEven(value * 100000.0) / 100000.0;
}
} // namespace corvane
