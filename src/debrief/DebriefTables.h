#pragma once

#include "debrief/Debrief.h"

#include <string>
#include <vector>

namespace corvane {
/// Texts in rows and columns. They are Windows-1252.
struct DebriefTable {
    std::vector<std::string> Heads; ///< of the columns; empty: the first one names the rows
    std::vector<std::vector<std::string>> Rows;
};

/// A time since the beginning as people read it: 1:02:03, or 2:03.
std::string ClockText(double seconds);

/// The session in a few numbers.
DebriefTable SummaryTable(const Debrief& debrief);
/// What happened: a row for each item. Where the session was recorded the last column says where in the recording.
DebriefTable ItemTable(const Debrief& debrief);
DebriefTable FlightTable(const Debrief& debrief);
/// Where the recording of a time is, or why there is none.
std::string RecordingText(const Debrief& debrief, double timeS);
} // namespace corvane
