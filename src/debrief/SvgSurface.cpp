#include "debrief/SvgSurface.h"

#include "core/NumberText.h"
#include "core/Text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace corvane {
static constexpr std::int32_t FontPx = 11;

std::string MarkupText(std::string_view text)
{
    std::string escaped;
    for (const char character : Windows1252ToUtf8(text))
        switch (character) {
        case '&': escaped += "&amp;"; break;
        case '<': escaped += "&lt;"; break;
        case '>': escaped += "&gt;"; break;
        case '"': escaped += "&quot;"; break;
        default: escaped += static_cast<unsigned char>(character) < ' ' ? ' ' : character;
        }
    return escaped;
}

static std::string Paint(Color color)
{
    return "rgb(" + NumberText(std::int32_t{color.R}) + ',' + NumberText(std::int32_t{color.G}) + ',' +
           NumberText(std::int32_t{color.B}) + ')';
}

static std::string Attribute(std::string_view name, double value)
{
    constexpr double Tenths = 10;
    return ' ' + std::string(name) + "=\"" + NumberText(std::round(value * Tenths) / Tenths) + '"';
}

std::string SvgSurface::Stroke() const
{
    constexpr std::array<const char*, 3> Dashes{"", " stroke-dasharray=\"6 3\"", " stroke-dasharray=\"1 3\""};
    return " stroke=\"" + Paint(State.PenColor) + '"' +
           (State.PenWidth > 1 ? Attribute("stroke-width", State.PenWidth) : std::string()) +
           Dashes[static_cast<std::size_t>(State.Style)];
}

bool SvgSurface::IsOutside(ScopePoint corner1, ScopePoint corner2) const noexcept
{
    const auto [left, right] = std::minmax(corner1.X, corner2.X);
    const auto [top, bottom] = std::minmax(corner1.Y, corner2.Y);
    return right < 0 || left > m_width || bottom < 0 || top > m_height;
}

void SvgSurface::Line(ScopePoint from, ScopePoint to)
{
    if (!IsOutside(from, to))
        m_content += "<line" + Attribute("x1", from.X) + Attribute("y1", from.Y) + Attribute("x2", to.X) +
                     Attribute("y2", to.Y) + Stroke() + "/>\n";
}

void SvgSurface::Ellipse(ScopePoint corner1, ScopePoint corner2)
{
    if (IsOutside(corner1, corner2))
        return;
    const double rx = std::abs(static_cast<double>(corner2.X) - corner1.X) / 2;
    const double ry = std::abs(static_cast<double>(corner2.Y) - corner1.Y) / 2;
    m_content += "<ellipse" + Attribute("cx", (static_cast<double>(corner1.X) + corner2.X) / 2) +
                 Attribute("cy", (static_cast<double>(corner1.Y) + corner2.Y) / 2) + Attribute("rx", rx) +
                 Attribute("ry", ry) + Stroke() +
                 (State.FillSolid ? " fill=\"" + Paint(State.FillColor) + '"' : std::string()) + "/>\n";
}

void SvgSurface::Arc(ScopePoint corner1, ScopePoint corner2, ScopePoint start, ScopePoint end)
{
    const double rx = std::abs(static_cast<double>(corner2.X) - corner1.X) / 2;
    const double ry = std::abs(static_cast<double>(corner2.Y) - corner1.Y) / 2;
    if (IsOutside(corner1, corner2) || rx <= 0 || ry <= 0)
        return;
    const double cx = (static_cast<double>(corner1.X) + corner2.X) / 2;
    const double cy = (static_cast<double>(corner1.Y) + corner2.Y) / 2;
    const auto angle = [&](ScopePoint at) { return std::atan2((cy - at.Y) / ry, (at.X - cx) / rx); };
    constexpr double Turn = 6.283185307179586;
    const double from = angle(start);
    double sweep = angle(end) - from; // counter-clockwise, as y goes down
    if (sweep <= 0)
        sweep += Turn;
    if (start == end) {
        const bool filled = std::exchange(State.FillSolid, false);
        Ellipse(corner1, corner2);
        State.FillSolid = filled;
        return;
    }
    const auto place = [&](double at) {
        return NumberText(std::round((cx + rx * std::cos(at)) * 10) / 10) + ' ' +
               NumberText(std::round((cy - ry * std::sin(at)) * 10) / 10);
    };
    m_content += "<path d=\"M" + place(from) + " A" + NumberText(rx) + ' ' + NumberText(ry) + " 0 " +
                 (sweep > Turn / 2 ? '1' : '0') + " 0 " + place(from + sweep) + '"' + Stroke() + "/>\n";
}

void SvgSurface::SetPixel(ScopePoint at, Color color)
{
    if (!IsOutside(at, at))
        m_content += "<rect" + Attribute("x", at.X) + Attribute("y", at.Y) +
                     " width=\"1\" height=\"1\" stroke=\"none\" fill=\"" + Paint(color) + "\"/>\n";
}

void SvgSurface::TextOut(ScopePoint topLeft, std::string_view text)
{
    if (!IsOutside(topLeft, Offset(topLeft, TextWidth(text), TextHeight())))
        m_content += "<text" + Attribute("x", topLeft.X) + Attribute("y", topLeft.Y + FontPx) + " fill=\"" +
                     Paint(State.PenColor) + "\">" + MarkupText(text) + "</text>\n";
}

std::int32_t SvgSurface::TextHeight() const
{
    return FontPx + 2;
}

std::int32_t SvgSurface::TextWidth(std::string_view text) const
{
    constexpr std::int32_t CharacterPx = 6;
    constexpr std::size_t LongestText = 10000;
    return static_cast<std::int32_t>(std::min(text.size(), LongestText)) * CharacterPx;
}

std::string SvgSurface::Element(std::string_view label) const
{
    const std::string size = NumberText(m_width) + ' ' + NumberText(m_height);
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" role=\"img\" aria-label=\"" + MarkupText(label) +
           "\" viewBox=\"0 0 " + size +
           "\" fill=\"none\" stroke-width=\"1\" font-family=\"sans-serif\" font-size=\"11\">\n<rect width=\"100%\" "
           "height=\"100%\" fill=\"black\"/>\n" +
           m_content + "</svg>\n";
}
} // namespace corvane
