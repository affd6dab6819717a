#include "cli/NetworkOptions.h"

#include "cli/NumberList.h"
#include "net/sockets/HostResolver.h"

namespace corvane {
static constexpr int LargestPort = 65535;

static std::optional<std::vector<double>> ParsePorts(const std::string& text)
{
    auto ports = ParseNumbers(text, '-', 2);
    const auto isPort = [](double n) { return n >= 1 && n <= LargestPort && n == static_cast<std::uint16_t>(n); };
    if (!ports || !isPort(ports->front()) || !isPort(ports->back()) || ports->front() > ports->back())
        return std::nullopt;
    return ports;
}

void AddPeerOptions(CLI::App& command, DirectPlayOptions& options)
{
    command.add_option("--bind", options.BindAddress, "Local address of all sockets")
        ->check(CLI::ValidIPV4)
        ->type_name("ADDRESS")
        ->capture_default_str();
    command.add_option("--port", options.EnumerationPort, "Port that sessions are looked for at")
        ->check(CLI::Range(1, LargestPort))
        ->capture_default_str();
    command
        .add_option_function<std::string>(
            "--ports",
            [&options](const std::string& text) {
                if (const auto ports = ParsePorts(text)) {
                    options.FirstPort = static_cast<std::uint16_t>(ports->front());
                    options.LastPort = static_cast<std::uint16_t>(ports->back());
                }
            },
            "Ports from which the peer takes its own [2300-2400]")
        ->check(CLI::Validator(
            [](std::string& text) {
                return ParsePorts(text) ? std::string() : std::string("must have the form FIRST-LAST");
            },
            "FIRST-LAST"))
        ->type_name("");
}

void AddSearchOptions(CLI::App& command, DirectPlayOptions& options)
{
    command.add_option("--address", options.HostAddress, "Name or address of the host; without it all are asked")
        ->check(CLI::Validator(
            [](std::string& host) {
                const auto fault = directplay::HostFault(host);
                if (!fault)
                    return std::string();
                return host + ": " + *fault + (fault->find("port") == std::string::npos ? "" : " (see --port)");
            },
            ""))
        ->type_name("HOST");
    command.add_option("--broadcast", options.BroadcastAddress, "Address by which all are asked")
        ->check(CLI::ValidIPV4)
        ->type_name("ADDRESS")
        ->capture_default_str();
}

void AddForOption(CLI::App& command, std::optional<double>& seconds)
{
    command.add_option("--for", seconds, "Ends after so many seconds; without it, when interrupted")
        ->check(CLI::NonNegativeNumber)
        ->type_name("SECONDS");
}
} // namespace corvane
