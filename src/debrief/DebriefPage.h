#pragma once

#include "debrief/Debrief.h"

#include <string>
#include <string_view>

namespace corvane {
/// A time since the beginning as people read it: 1:02:03, or 2:03.
std::string ClockText(double seconds);
/// What happened, item by item, and flight by flight, as the body of an HTML page. Names are escaped.
/// links  each item's time is a link to "at:SECONDS"
std::string DebriefBody(const Debrief& debrief, bool links);
/// The heading and the summary.
std::string DebriefHead(const Debrief& debrief);
/// The page, which needs no other file.
/// pictures  elements that stand between the summary and the items
std::string DebriefPage(const Debrief& debrief, std::string_view pictures);
/// The same as JSON: docs/formats/debrief.md.
std::string DebriefJson(const Debrief& debrief);
} // namespace corvane
