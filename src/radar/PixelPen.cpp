#include "radar/PixelPen.h"

namespace corvane {
void PixelPen::Stamp(std::int64_t x, std::int64_t y) noexcept
{
    const std::int32_t radius = m_width / 2;
    const double center = m_width % 2 == 0 ? 0.5 : 0; // an even pen lies up and left of its place
    for (std::int32_t dy = -radius; dy < m_width - radius; ++dy)
        for (std::int32_t dx = -radius; dx < m_width - radius; ++dx)
            if ((dx + center) * (dx + center) + (dy + center) * (dy + center) <= radius * radius)
                PutPixel(x + dx, y + dy);
}
} // namespace corvane
