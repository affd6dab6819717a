#pragma once

#include "radar/PixelImage.h"

namespace corvane {
/// A drawing box whose picture persists: what is drawn stays until the box is cleared, and clearing brings back the
/// background picture. A new box is empty, with a black background.
class PictureBox {
public:
    /// Takes a new size: a black image; the background picture stays.
    void Resize(std::int32_t width, std::int32_t height) { m_image.Resize(width, height); }
    /// Makes a picture the background and shows it, so that drawings before it are gone. nullptr is plain black. The
    /// picture is borrowed: it must stay until it is replaced. One of another size is shown from the top left corner.
    void SetPicture(const PixelImage* picture) noexcept;
    /// Shows the background picture alone.
    void Clear() noexcept;

    /// What is shown, to draw on or to copy as a snapshot.
    [[nodiscard]] PixelImage& Image() noexcept { return m_image; }
    [[nodiscard]] const PixelImage& Image() const noexcept { return m_image; }

private:
    PixelImage m_image;
    const PixelImage* m_background = nullptr;
};
} // namespace corvane
