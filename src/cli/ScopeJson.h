#pragma once

#include "cli/RecordJson.h"
#include "core/Geodesy.h"
#include "radar/RecordingSurface.h"
#include "radar/ScopeView.h"

namespace corvane {
/// The recorded drawing operations, in drawing order.
Json OperationsJson(const RecordingSurface& recorder);
Json ViewJson(const ScopeView& view);
Json PositionJson(const PositionRecord& position);
} // namespace corvane
