#include "cli/DisplayArguments.h"

#include <algorithm>

namespace corvane {
static CLI::Validator DisplayAssignment()
{
    return {[](std::string& assignment) {
                DisplayOptions display;
                const Result<void> set = SetDisplayOption(display, assignment);
                return set ? std::string() : set.error().Text();
            },
            "NAME=VALUE"};
}

static CLI::Validator DisplayName()
{
    return {[](std::string& name) {
                return DisplayByName(name, ControlMode::Airport) ? std::string() : "there are classic and modern";
            },
            "NAME"};
}

/// Every option with its range, for the help text.
static std::string AssignmentHelp()
{
    std::string help = "Changes a value of the display:";
    for (const DisplayOption& option : AllDisplayOptions())
        help.append("\n").append(option.Name).append(" (").append(option.Range()).append("): ").append(option.Help);
    return help;
}

void AddSetOption(CLI::App& command, DisplayArguments& arguments)
{
    command.add_option("--set", arguments.Set, AssignmentHelp())->allow_extra_args(false)->check(DisplayAssignment());
}

void AddDisplayOptions(CLI::App& command, DisplayArguments& arguments)
{
    command.add_option("--display", arguments.Display, "A ready set of display options: classic or modern")
        ->check(DisplayName());
    AddSetOption(command, arguments);
}

Result<DisplayOptions> DisplayOptionsOf(const DisplayArguments& arguments, ControlMode mode, std::string_view fallback)
{
    const std::string_view name = arguments.Display.empty() ? fallback : std::string_view(arguments.Display);
    auto display = DisplayByName(name, mode);
    if (!display)
        return Fail(std::string(name), "is no display");
    for (const std::string& assignment : arguments.Set)
        if (const Result<void> set = SetDisplayOption(*display, assignment); !set)
            return set.error();
    return *display;
}
} // namespace corvane
