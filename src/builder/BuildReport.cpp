#include "builder/BuildReport.h"

#include "core/Text.h"

#include <nlohmann/json.hpp>

namespace corvane {
std::string BuildReportLines(std::span<const FileProblems> files)
{
    using Json = nlohmann::ordered_json;
    std::string lines;
    for (const FileProblems& file : files) {
        const Json records = {{"Airports", file.Records.Airports},
                              {"Vors", file.Records.Vors},
                              {"Ndbs", file.Records.Ndbs},
                              {"Airspaces", file.Records.Airspaces}};
        for (const ScanProblem& problem : file.Problems.First) {
            const Json line = {{"File", Windows1252ToUtf8(file.File)},
                               {"Line", 0},
                               {"Why", Windows1252ToUtf8(problem.Why)},
                               {"Area", Windows1252ToUtf8(file.Area)},
                               {"Offset", problem.Offset},
                               {"Records", records}};
            lines += line.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
        }
    }
    return lines;
}
} // namespace corvane
