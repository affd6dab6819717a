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

inline CommandRun RunCli(std::vector<std::string> arguments, const std::string& input = {})
{
    std::istringstream in(input);
    std::ostringstream out;
    std::ostringstream notices;
    std::vector<const char*> argv = {"corvane-cli"};
    for (const std::string& argument : arguments)
        argv.push_back(argument.c_str());
    const int status = RunCommandLine(static_cast<int>(argv.size()), argv.data(), {in, out, notices, false});
    return {status, out.str(), notices.str()};
}
} // namespace corvane
