#pragma once

#include <algorithm>
#include <cstdint>

namespace corvane {
/// Holds the work on a hostile file to a small multiple of its size.
///
/// Scenery files name their records by offset, and nothing stops a file from naming one record a million times, or
/// records that overlap. Every decoder spends the bytes that it is about to walk over. A sound file names each of its
/// bytes about once and comes nowhere near the limit; one that passes it is refused as a whole, so that no part of a
/// sound file is ever left out.
class WorkBudget {
public:
    explicit WorkBudget(std::int64_t fileSize) noexcept : m_left(fileSize * TimesTheFile + SmallFileAllowance) {}

    /// False once more has been spent than the file's size warrants; a negative amount counts as 0.
    bool Spend(std::int64_t bytes) noexcept
    {
        m_left -= std::clamp(bytes, std::int64_t{0}, MostAtOnce);
        m_left = std::max(m_left, std::int64_t{-1});
        return m_left >= 0;
    }
    [[nodiscard]] bool Exhausted() const noexcept { return m_left < 0; }

private:
    static constexpr std::int64_t TimesTheFile = 8;
    static constexpr std::int64_t SmallFileAllowance = 65536;
    static constexpr std::int64_t MostAtOnce = std::int64_t{1} << 40;

    std::int64_t m_left;
};
} // namespace corvane
