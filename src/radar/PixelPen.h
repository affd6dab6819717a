#pragma once

#include "core/Rounding.h"
#include "radar/PixelImage.h"
#include "radar/Surface.h"

#include <cstdint>

namespace corvane {
/// Puts the pixels of an outline on an image: one pixel a step, or a round stamp for wider pens. Places off the image
/// are left out. Dashes are 18 pixels with gaps of 6, dots 3 with gaps of 3; only pens of width 1 break their lines.
/// Widths and dashes are so many times as large as the scale says.
class PixelPen {
public:
    PixelPen(PixelImage& image, const DrawState& state, double scale) noexcept
        : m_image(image),
          m_pixel(PixelImage::PixelOf(state.PenColor)),
          m_width(std::max(RoundTo<std::int32_t>(state.PenWidth * scale), 1))
    {
        if (state.PenWidth > 1 || state.Style == PenStyle::Solid)
            return;
        m_dash = RoundTo<std::int32_t>((state.Style == PenStyle::Dash ? 18 : 3) * scale);
        m_period = RoundTo<std::int32_t>((state.Style == PenStyle::Dash ? 24 : 6) * scale);
    }

    /// How far outside the image a place may lie and still touch it.
    [[nodiscard]] std::int32_t Reach() const noexcept { return m_width; }

    /// Puts the pen down at the step-th pixel (0 or more) of an outline.
    void Put(std::int64_t x, std::int64_t y, std::int64_t step) noexcept
    {
        if (m_period != 0 && step % m_period >= m_dash)
            return;
        if (m_width == 1)
            PutPixel(x, y);
        else
            Stamp(x, y);
    }

private:
    void PutPixel(std::int64_t x, std::int64_t y) noexcept
    {
        if (x >= 0 && x < m_image.Width() && y >= 0 && y < m_image.Height())
            m_image.Row(static_cast<std::int32_t>(y))[x] = m_pixel;
    }
    void Stamp(std::int64_t x, std::int64_t y) noexcept;

    PixelImage& m_image;
    std::uint32_t m_pixel;
    std::int32_t m_width;
    std::int32_t m_dash = 0;
    std::int32_t m_period = 0; ///< 0 for solid lines
};
} // namespace corvane
