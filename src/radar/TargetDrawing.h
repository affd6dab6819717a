#pragma once

#include "radar/ColourSchemes.h"
#include "radar/TargetMarks.h"

namespace corvane {
/// Draws what has been chosen: trails, predicted lines with a stroke for each minute, targets with heading vector and
/// leader, and blocks; the selected target last. Stale targets are hollow, filtered ones small. Leaves the drawing
/// defaults set.
void DrawTargetMarks(Surface& surface, const TargetMarks& marks, ColourScheme scheme);

/// Draws the lines between pairs in conflict, under the targets. One to come is thin and dashed, one that has come
/// wide and solid.
void DrawPairLines(Surface& surface, const TargetMarks& marks, const TargetColours& colours);
/// Draws the ring of a conflict (dashed and single, or solid and double), the square of a low altitude, and the frame
/// of a block whose target has lost its separation.
void DrawAlertSigns(Surface& surface, const TargetMark& mark, const TargetColours& colours);
/// Draws what is written over all else: the pairs' times and distances, the list of alerts, the filter's note.
void DrawScopeNotes(Surface& surface, const TargetMarks& marks, const TargetColours& colours);
} // namespace corvane
