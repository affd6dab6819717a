#include "radar/PictureBox.h"

namespace corvane {
void PictureBox::SetPicture(const PixelImage* picture) noexcept
{
    m_background = picture;
    Clear();
}

void PictureBox::Clear() noexcept
{
    std::int32_t columns = 0;
    std::int32_t rows = 0;
    if (m_background != nullptr) {
        columns = std::min(m_background->Width(), m_image.Width());
        rows = std::min(m_background->Height(), m_image.Height());
    }
    for (std::int32_t y = 0; y < m_image.Height(); ++y) {
        const std::int32_t covered = y < rows ? columns : 0;
        std::uint32_t* row = m_image.Row(y);
        if (covered > 0)
            std::copy_n(m_background->Row(y), covered, row);
        std::fill(row + covered, row + m_image.Width(), PixelImage::Black);
    }
}
} // namespace corvane
