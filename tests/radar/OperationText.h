#pragma once

#include "radar/RecordingSurface.h"
#include "radar/ScopeView.h"

#include <string>
#include <vector>

namespace corvane {
inline std::string ColorText(Color color)
{
    return std::to_string(color.R) + "," + std::to_string(color.G) + "," + std::to_string(color.B);
}

/// A recorded operation as one readable line, for golden lists:
/// "line 5,5 20,5 pen 0,192,0 w1 solid", "ellipse 0,10 10,0 pen ... fill 0,192,0", "text 26,-42 255,255,255 N1".
inline std::string OperationText(const RecordingSurface& surface, const ScopeOperation& op)
{
    using Primitive = ScopeOperation::Primitive;
    constexpr const char* Styles[] = {"solid", "dash", "dot"};
    const auto at = [&](std::size_t i) {
        return " " + std::to_string(op.Points[i].X) + "," + std::to_string(op.Points[i].Y);
    };
    const std::string pen = " pen " + ColorText(op.State.PenColor) + " w" + std::to_string(op.State.PenWidth) + " " +
                            Styles[static_cast<std::size_t>(op.State.Style)];
    switch (op.Type) {
    case Primitive::Line: return "line" + at(0) + at(1) + pen;
    case Primitive::Ellipse:
        return "ellipse" + at(0) + at(1) + pen +
               (op.State.FillSolid ? " fill " + ColorText(op.State.FillColor) : std::string());
    case Primitive::Arc: return "arc" + at(0) + at(1) + at(2) + at(3) + pen;
    case Primitive::Pixel: return "pixel" + at(0) + " " + ColorText(op.Ink);
    case Primitive::Text: return "text" + at(0) + " " + ColorText(op.Ink) + " " + std::string(surface.TextOf(op));
    }
    return {};
}

inline std::vector<std::string> OperationTexts(const RecordingSurface& surface)
{
    std::vector<std::string> texts;
    for (const ScopeOperation& op : surface.Operations())
        texts.push_back(OperationText(surface, op));
    return texts;
}

/// A scope of 1000 x 1000 pixels over 0..10 degrees east and north: 100 pixels to a degree, (0, 10) at the top left.
inline ScopeView TenDegreeView()
{
    ScopeView view;
    view.ViewEast = 10;
    view.ViewNorth = 10;
    view.ScopeWidthPx = 1000;
    view.ScopeHeightPx = 1000;
    view.ViewCenter = {5, 5};
    return view;
}
} // namespace corvane
