#pragma once

#include "radar/Surface.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace corvane {
/// Pixels as 0xffRRGGBB, row by row from the top without padding: what windows and picture files take as it is.
class PixelImage {
public:
    static constexpr std::uint32_t Black = 0xff000000;
    static constexpr std::int32_t LargestSide = 16384;

    static constexpr std::uint32_t PixelOf(Color color) noexcept
    {
        return Black | static_cast<std::uint32_t>(color.R << 16 | color.G << 8 | color.B);
    }

    PixelImage() = default;
    PixelImage(std::int32_t width, std::int32_t height) { Resize(width, height); }

    /// Black everywhere; sizes are held to 0 .. LargestSide.
    void Resize(std::int32_t width, std::int32_t height)
    {
        m_width = std::clamp(width, 0, LargestSide);
        m_height = std::clamp(height, 0, LargestSide);
        m_pixels.assign(static_cast<std::size_t>(m_width) * static_cast<std::size_t>(m_height), Black);
    }
    void Fill(std::uint32_t pixel) noexcept { std::fill(m_pixels.begin(), m_pixels.end(), pixel); }

    [[nodiscard]] std::int32_t Width() const noexcept { return m_width; }
    [[nodiscard]] std::int32_t Height() const noexcept { return m_height; }
    [[nodiscard]] std::uint32_t* Row(std::int32_t y) noexcept { return m_pixels.data() + Start(y); }
    [[nodiscard]] const std::uint32_t* Row(std::int32_t y) const noexcept { return m_pixels.data() + Start(y); }
    /// x and y must lie inside.
    [[nodiscard]] std::uint32_t At(std::int32_t x, std::int32_t y) const noexcept { return Row(y)[x]; }
    bool operator==(const PixelImage&) const = default;

private:
    [[nodiscard]] std::size_t Start(std::int32_t y) const noexcept
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width);
    }

    std::vector<std::uint32_t> m_pixels;
    std::int32_t m_width = 0;
    std::int32_t m_height = 0;
};
} // namespace corvane
