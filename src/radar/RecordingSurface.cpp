#include "radar/RecordingSurface.h"

#include "radar/ScopeTextAdvances.h"

namespace corvane {
using Primitive = ScopeOperation::Primitive;

ScopeOperation& RecordingSurface::Append(Primitive type)
{
    ScopeOperation& operation = m_operations.emplace_back();
    operation.Type = type;
    operation.State = State;
    operation.Ink = State.PenColor;
    return operation;
}

void RecordingSurface::Line(ScopePoint from, ScopePoint to)
{
    Append(Primitive::Line).Points = {from, to};
}

void RecordingSurface::Ellipse(ScopePoint corner1, ScopePoint corner2)
{
    Append(Primitive::Ellipse).Points = {corner1, corner2};
}

void RecordingSurface::Arc(ScopePoint corner1, ScopePoint corner2, ScopePoint start, ScopePoint end)
{
    Append(Primitive::Arc).Points = {corner1, corner2, start, end};
}

void RecordingSurface::SetPixel(ScopePoint at, Color color)
{
    ScopeOperation& operation = Append(Primitive::Pixel);
    operation.Points = {at};
    operation.Ink = color;
}

void RecordingSurface::TextOut(ScopePoint topLeft, std::string_view text)
{
    ScopeOperation& operation = Append(Primitive::Text);
    operation.Points = {topLeft};
    operation.TextStart = static_cast<std::uint32_t>(m_texts.size());
    operation.TextLength = static_cast<std::uint32_t>(text.size());
    m_texts.append(text);
}

std::int32_t RecordingSurface::TextWidth(std::string_view text) const
{
    std::int32_t width = 0;
    for (const char character : text)
        width += ScopeTextAdvances[static_cast<unsigned char>(character)];
    return width;
}

std::string_view RecordingSurface::TextOf(const ScopeOperation& operation) const noexcept
{
    return std::string_view(m_texts).substr(operation.TextStart, operation.TextLength);
}

void RecordingSurface::Clear() noexcept
{
    m_operations.clear();
    m_texts.clear();
}

void RecordingSurface::Replay(Surface& surface) const
{
    for (const ScopeOperation& operation : m_operations) {
        const auto& p = operation.Points;
        surface.State = operation.State;
        switch (operation.Type) {
        case Primitive::Line: surface.Line(p[0], p[1]); break;
        case Primitive::Ellipse: surface.Ellipse(p[0], p[1]); break;
        case Primitive::Arc: surface.Arc(p[0], p[1], p[2], p[3]); break;
        case Primitive::Pixel: surface.SetPixel(p[0], operation.Ink); break;
        case Primitive::Text: surface.TextOut(p[0], TextOf(operation)); break;
        }
    }
}
} // namespace corvane
