#pragma once

#include "cli/RecordJson.h"
#include "tracks/Alerts.h"

namespace corvane {
/// A beginning or an end of an alert.
Json ToJson(const AlertEvent& event);
} // namespace corvane
