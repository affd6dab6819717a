#pragma once

#include "session/MemberRadio.h"

#include <string>

namespace corvane {
/// A transponder code as it is read, "0021"; empty where it is not known.
std::string SquawkText(const MemberRadio& radio);
/// A frequency in megahertz as it is read, "118.050"; empty where it is not known.
std::string FrequencyText(const MemberRadio& radio);
} // namespace corvane
