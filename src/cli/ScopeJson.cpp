#include "cli/ScopeJson.h"

#include <array>

namespace corvane {
static Json ColorJson(Color color)
{
    return Json::array({color.R, color.G, color.B});
}

static Json PenJson(const DrawState& state)
{
    constexpr std::array<const char*, 3> Styles = {"solid", "dash", "dot"};
    return Json::array({state.PenColor.R, state.PenColor.G, state.PenColor.B, state.PenWidth,
                        Styles.at(static_cast<std::size_t>(state.Style))});
}

static Json OperationJson(const RecordingSurface& recorder, const ScopeOperation& operation)
{
    const auto& [p1, p2, p3, p4] = operation.Points;
    switch (operation.Type) {
    case ScopeOperation::Primitive::Line:
        return {{"op", "line"}, {"x1", p1.X}, {"y1", p1.Y},
                {"x2", p2.X},   {"y2", p2.Y}, {"pen", PenJson(operation.State)}};
    case ScopeOperation::Primitive::Ellipse:
        return {{"op", "ellipse"},
                {"x1", p1.X},
                {"y1", p1.Y},
                {"x2", p2.X},
                {"y2", p2.Y},
                {"pen", PenJson(operation.State)},
                {"fill", operation.State.FillSolid ? ColorJson(operation.State.FillColor) : Json(nullptr)}};
    case ScopeOperation::Primitive::Arc:
        return {{"op", "arc"}, {"x1", p1.X}, {"y1", p1.Y}, {"x2", p2.X}, {"y2", p2.Y},
                {"xs", p3.X},  {"ys", p3.Y}, {"xe", p4.X}, {"ye", p4.Y}, {"pen", PenJson(operation.State)}};
    case ScopeOperation::Primitive::Pixel:
        return {{"op", "pixel"}, {"x", p1.X}, {"y", p1.Y}, {"color", ColorJson(operation.Ink)}};
    case ScopeOperation::Primitive::Text: break;
    }
    return {{"op", "text"},
            {"x", p1.X},
            {"y", p1.Y},
            {"text", TextJson(recorder.TextOf(operation))},
            {"color", ColorJson(operation.Ink)}};
}

Json OperationsJson(const RecordingSurface& recorder)
{
    Json operations = Json::array();
    for (const ScopeOperation& operation : recorder.Operations())
        operations.push_back(OperationJson(recorder, operation));
    return operations;
}

Json ViewJson(const ScopeView& view)
{
    return {{"ViewWest", view.ViewWest},      {"ViewNorth", view.ViewNorth},   {"ViewEast", view.ViewEast},
            {"ViewSouth", view.ViewSouth},    {"SavedWest", view.SavedWest},   {"SavedNorth", view.SavedNorth},
            {"SavedEast", view.SavedEast},    {"SavedSouth", view.SavedSouth}, {"ZoomLevel", view.ZoomLevel},
            {"OutlineStep", view.OutlineStep}};
}

Json PositionJson(const PositionRecord& position)
{
    return {{"Name", TextJson(position.Name)},
            {"Kind", TextJson(position.Kind)},
            {"Lat", position.Lat},
            {"Lon", position.Lon}};
}
} // namespace corvane
