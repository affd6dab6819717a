#pragma once

#include "builder/BglScan.h"

#include <cstdint>
#include <string>

namespace corvane {
/// Decodes the airport whose data begin at an offset of the file and hands it to the sink.
///
/// An error (a field that reaches over the file's end, a number that does not fit) ends the decoding: the airport is
/// handed on with the fields set before it, and the scan goes on unharmed.
void DecodeAirport(BglScan& scan, std::int64_t dataOffset, const std::string& name);
} // namespace corvane
