#pragma once

#include "radar/Surface.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// One call of a drawing primitive with the drawing state of that moment.
struct ScopeOperation {
    enum class Primitive : std::uint8_t { Line, Ellipse, Arc, Pixel, Text };

    Primitive Type = Primitive::Line;
    /// As handed to the primitive. Line: from, to. Ellipse: the corners. Arc: the corners, then start and end radial.
    /// Pixel and Text: the place.
    std::array<ScopePoint, 4> Points{};
    DrawState State;
    Color Ink; ///< the colour of a pixel or a text
    std::uint32_t TextStart = 0;
    std::uint32_t TextLength = 0;
};

/// A surface that writes its calls down: for tests, for the command line and for painting the same picture again. What
/// it keeps is reused after Clear, so that a recorder in use allocates nothing.
class RecordingSurface final : public Surface {
public:
    static constexpr std::int32_t DefaultTextHeight = 13;
    explicit RecordingSurface(std::int32_t textHeight = DefaultTextHeight) noexcept : m_textHeight(textHeight) {}

    void Line(ScopePoint from, ScopePoint to) override;
    void Ellipse(ScopePoint corner1, ScopePoint corner2) override;
    void Arc(ScopePoint corner1, ScopePoint corner2, ScopePoint start, ScopePoint end) override;
    void SetPixel(ScopePoint at, Color color) override;
    void TextOut(ScopePoint topLeft, std::string_view text) override;
    [[nodiscard]] std::int32_t TextHeight() const override { return m_textHeight; }
    /// In the scope's typeface.
    [[nodiscard]] std::int32_t TextWidth(std::string_view text) const override;

    [[nodiscard]] std::span<const ScopeOperation> Operations() const noexcept { return m_operations; }
    /// The Windows-1252 text of a Text operation of this recorder; valid until the next call that draws or clears.
    [[nodiscard]] std::string_view TextOf(const ScopeOperation& operation) const noexcept;
    /// Forgets the operations; the drawing state stays.
    void Clear() noexcept;
    /// Repeats the operations on another surface, each in its own drawing state, and leaves the last one's behind.
    void Replay(Surface& surface) const;

private:
    ScopeOperation& Append(ScopeOperation::Primitive type);

    std::vector<ScopeOperation> m_operations;
    std::string m_texts;
    std::int32_t m_textHeight;
};
} // namespace corvane
