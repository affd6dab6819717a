#include "cli/Commands.h"
#include "cli/NetworkOptions.h"
#include "cli/RecordJson.h"
#include "net/DirectPlayPeer.h"

#include <cmath>
#include <ostream>

namespace corvane {
namespace {
struct SessionsOptions {
    DirectPlayOptions Network;
    std::optional<double> TimeoutS;
};
} // namespace

static Result<void> ListSessions(const SessionsOptions& options, const Console& console)
{
    const InterruptWatch watch;
    DirectPlayOptions network = options.Network;
    network.WhileWaiting = [&watch] { return !watch.Interrupted(); };
    DirectPlayPeer peer(network);
    if (const auto ready = peer.InitializeConnection(DirectPlayConnectionAddress); !ready)
        return ready.error();
    const auto timeoutMs = static_cast<std::int32_t>(std::ceil(options.TimeoutS.value_or(0) * 1000));
    const auto sessions = peer.GetDPEnumSessions(timeoutMs, EnumSessionsPasswordRequired);
    if (!sessions)
        return sessions.error();
    for (const SessionEntry& session : *sessions) {
        const Json line = {{"Name", TextJson(session.Name)},
                           {"CurrentPlayers", session.CurrentPlayers},
                           {"MaxPlayers", session.MaxPlayers},
                           {"InstanceGuid", session.InstanceGuid},
                           {"Flags", session.Flags}};
        console.Out << ToLine(line) << '\n';
    }
    return {};
}

void AddSessionsCommand(CLI::App& app, const Console& console, CommandWork& work)
{
    CLI::App* const command = app.add_subcommand("sessions", "Lists the sessions on a host or the local network");
    const auto options = std::make_shared<SessionsOptions>();
    AddSearchOptions(*command, options->Network);
    AddPeerOptions(*command, options->Network);
    constexpr double Longest = 3600;
    command->add_option("--timeout", options->TimeoutS, "How long answers are waited for [5]")
        ->check(CLI::Range(0.001, Longest))
        ->type_name("SECONDS");
    command->callback(
        [options, &console, &work] { work = [options, &console] { return ListSessions(*options, console); }; });
}
} // namespace corvane
