#pragma once

#include <nlohmann/json.hpp>

#include <string>

namespace corvane {
/// Members keep the order in which they are set: the order of the record's fields.
using Json = nlohmann::ordered_json;

/// A value as one line of output, without its end. Also the control characters that JSON lets stand are escaped, so
/// that nothing from outside reaches a terminal as more than text; what is no UTF-8 becomes U+FFFD.
std::string ToLine(const Json& value);
} // namespace corvane
