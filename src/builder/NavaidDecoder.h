#pragma once

#include "builder/BglScan.h"

#include <cstdint>

namespace corvane {
/// Hands every VOR (NDB) of the sectioned layout to the sink, in section order.
///
/// base  the section's offset from the file's start, which is also what the offsets inside it count from
/// Offsets that point outside the file read as zeros and end their list. A station is handed on once its decoding has
/// begun: where the file ends inside it, the fields not read keep those of the section's station before it, blank for
/// the first.
void ScanVorSection(BglScan& scan, std::int64_t base);
void ScanNdbSection(BglScan& scan, std::int64_t base);
} // namespace corvane
