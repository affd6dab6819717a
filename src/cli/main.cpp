#include "cli/CommandLine.h"
#include "os/StandardStreams.h"

#include <iostream>

using namespace corvane;

int main(int argc, char** argv)
{
    std::ios::sync_with_stdio(false);
    return RunCommandLine(argc, argv, {std::cin, std::cout, std::cerr, IsTerminal(StandardError), StandardInput});
}
