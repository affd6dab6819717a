#include "radar/TargetDrawing.h"

namespace corvane {
static constexpr std::int32_t ViolationWidthPx = 2;

static void SetConflictPen(Surface& surface, bool violated, const TargetColours& colours)
{
    surface.State = {};
    surface.State.PenColor = violated ? colours.Violation : colours.Prediction;
    surface.State.PenWidth = violated ? ViolationWidthPx : 1;
    surface.State.Style = violated ? PenStyle::Solid : PenStyle::Dash;
}

void DrawPairLines(Surface& surface, const TargetMarks& marks, const TargetColours& colours)
{
    for (const PairMark& pair : marks.Pairs) {
        SetConflictPen(surface, pair.Violated, colours);
        surface.Line(pair.From, pair.To);
    }
    surface.RestoreDefaults();
}

static void DrawFrame(Surface& surface, const PixelBox& box)
{
    const ScopePoint topLeft{box.Left, box.Top};
    const ScopePoint topRight{box.Right, box.Top};
    const ScopePoint bottomLeft{box.Left, box.Bottom};
    const ScopePoint bottomRight{box.Right, box.Bottom};
    surface.Line(topLeft, topRight);
    surface.Line(topRight, bottomRight);
    surface.Line(bottomRight, bottomLeft);
    surface.Line(bottomLeft, topLeft);
}

void DrawAlertSigns(Surface& surface, const TargetMark& mark, const TargetColours& colours)
{
    constexpr std::int32_t RingPx = 9;
    constexpr std::int32_t OuterRingPx = 13;
    constexpr std::int32_t FrameGapPx = 2;
    if (mark.Conflict != ConflictMark::None) {
        const bool violated = mark.Conflict == ConflictMark::Violated;
        SetConflictPen(surface, violated, colours);
        surface.Circle(mark.At, RingPx);
        if (violated) {
            surface.Circle(mark.At, OuterRingPx);
            surface.State.PenWidth = 1;
            if (!mark.Block.Lines.empty())
                DrawFrame(surface, mark.Place.Box.Grown(FrameGapPx));
        }
    }
    if (mark.LowAltitude) {
        surface.State = {};
        surface.State.PenColor = colours.Prediction;
        DrawFrame(surface, BoxAround(mark.At, RingPx));
    }
    surface.RestoreDefaults();
}

void DrawScopeNotes(Surface& surface, const TargetMarks& marks, const TargetColours& colours)
{
    for (const PairMark& pair : marks.Pairs) {
        surface.State.PenColor = pair.Violated ? colours.Violation : colours.Prediction;
        surface.TextOut({pair.TextBox.Left, pair.TextBox.Top}, pair.Text);
    }
    for (const AlertLine& line : marks.Alerts) {
        surface.State.PenColor = line.Violated ? colours.Violation : colours.Prediction;
        surface.TextOut({line.Box.Left, line.Box.Top}, line.Text);
    }
    if (marks.FilterNote.empty())
        return;
    surface.State.PenColor = colours.Note;
    surface.TextOut({marks.FilterNoteBox.Left, marks.FilterNoteBox.Top}, marks.FilterNote);
}
} // namespace corvane
