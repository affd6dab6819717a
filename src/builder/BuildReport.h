#pragma once

#include "builder/EncodedRecords.h"
#include "builder/ScanProblems.h"

#include <span>
#include <string>
#include <vector>

namespace corvane {
/// A scenery file that a build has gone on after. Texts are 8-bit.
struct FileProblems {
    std::string Area;
    std::string File;     ///< lower-cased path
    RecordCounts Records; ///< what the file gave all the same
    ScanProblems Problems;
};

/// A JSON object a line, one for each problem that is kept, with Area, File, Records, Offset and Why. Line is there for
/// those who read the reports of text files too, and 0.
std::string BuildReportLines(std::span<const FileProblems> files);
} // namespace corvane
