#pragma once

#include "debrief/Debrief.h"

#include <string>
#include <string_view>

namespace corvane {
/// What happened, item by item and flight by flight, as an HTML page that needs no other file. Names are escaped.
/// pictures  elements that stand between the summary and the items
std::string DebriefPage(const Debrief& debrief, std::string_view pictures);
/// The same as JSON: docs/formats/debrief.md.
std::string DebriefJson(const Debrief& debrief);
} // namespace corvane
