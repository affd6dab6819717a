#pragma once

#include "cli/CommandLine.h"

#include <sstream>
#include <string>
#include <vector>

namespace corvane {
/// What one command line gave back.
struct CommandRun {
    int Status = -1;
    std::string Out;
    std::string Notices;
};

/// liveInput  descriptor of the input that host and join follow
inline CommandRun RunCli(const std::vector<std::string>& arguments, const std::string& input = {}, int liveInput = -1)
{
    std::istringstream in(input);
    std::ostringstream out;
    std::ostringstream notices;
    std::vector<const char*> argv = {"corvane-cli"};
    for (const std::string& argument : arguments)
        argv.push_back(argument.c_str());
    const int status = RunCommandLine(static_cast<int>(argv.size()), argv.data(), {in, out, notices, false, liveInput});
    return {status, out.str(), notices.str()};
}
} // namespace corvane
