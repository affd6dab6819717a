#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace corvane {
/// The pictures of the 256 Windows-1252 characters in one size. Characters stand side by side at whole pixels, without
/// kerning, so a text costs no layout.
struct ScopeFont {
    struct Glyph {
        std::int32_t Left = 0; ///< of the picture, right of the pen
        std::int32_t Top = 0;  ///< of the picture, below the top of the line
        std::int32_t Width = 0;
        std::int32_t Height = 0;
        std::int32_t Advance = 0; ///< from this pen position to the next character's
        std::uint32_t Start = 0;  ///< of its pixels in Inked
        std::uint32_t Count = 0;
    };
    /// A pixel of a character's picture that the character touches: most pixels it does not.
    struct InkedPixel {
        std::uint16_t X = 0;
        std::uint16_t Y = 0;
        std::uint8_t Coverage = 0; ///< 1 .. 255, all of the pixel
    };

    std::array<Glyph, 256> Glyphs{};
    std::vector<InkedPixel> Inked;
    std::int32_t LineHeight = 0; ///< from the top of a line to the top of the next
};
} // namespace corvane
