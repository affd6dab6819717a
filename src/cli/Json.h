#pragma once

#include <nlohmann/json.hpp>

namespace corvane {
/// Members keep the order in which they are set: the order of the record's fields.
using Json = nlohmann::ordered_json;
} // namespace corvane
