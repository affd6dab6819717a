#include "tests/soak/Hostile.h"
#include "tests/soak/Members.h"

#include <CLI/CLI.hpp>

#include <arpa/inet.h>
#include <array>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <netinet/in.h>
#include <random>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

/// The reliability run: one session over loopback that lasts, whose members come, go, vanish, stop reading, flood and
/// lose their connections, while strangers send rubbish to its ports. What the steady member receives must be whole.
namespace corvane::soak {
namespace {
using std::chrono::seconds;
constexpr const char* HostAddress = "127.0.88.1";
constexpr const char* SteadyAddress = "127.0.88.2";
constexpr const char* FlyingAddress = "127.0.88.3";
constexpr const char* StrangerAddress = "127.0.91.1";

enum class Disturbance : std::uint8_t { None, Hostile, All };

/// A member in a process of its own, whose report goes to a file.
class Member {
public:
    Member(const std::string& role, const std::string& address, double lasts, bool cuts = false)
        : m_report(std::filesystem::temp_directory_path() /
                   ("corvane-soak-" + std::to_string(getpid()) + "-" + address))
    {
        std::vector<std::string> arguments{"corvane_soak",        "--role",   role,
                                           "--address",           address,    "--for",
                                           std::to_string(lasts), "--report", m_report.string()};
        if (cuts)
            arguments.emplace_back("--cut");
        std::vector<char*> argv;
        for (std::string& argument : arguments)
            argv.push_back(argument.data());
        argv.push_back(nullptr);
        if (posix_spawn(&m_process, "/proc/self/exe", nullptr, nullptr, argv.data(), environ) != 0)
            m_process = -1;
    }
    Member(const Member&) = delete;
    Member& operator=(const Member&) = delete;
    ~Member()
    {
        Signal(SIGKILL);
        Wait();
        std::error_code ignored;
        std::filesystem::remove(m_report, ignored);
    }

    void Signal(int signal) const
    {
        if (m_process > 0)
            kill(m_process, signal);
    }
    /// Its report; an object with "error" where it failed.
    nlohmann::json Wait()
    {
        if (m_process > 0)
            waitpid(m_process, nullptr, 0);
        m_process = -1;
        std::ifstream in(m_report);
        auto report = nlohmann::json::parse(in, nullptr, false);
        return report.is_discarded() ? nlohmann::json{{"error", "no report"}} : report;
    }

private:
    std::filesystem::path m_report;
    pid_t m_process = -1;
};

/// A stranger: connects to the host's ports, sends rubbish, and leaves half of its connections open.
void SendRubbish(std::mt19937& random, std::vector<int>& halfOpen)
{
    constexpr std::array<std::uint16_t, 3> Ports{47624, 2300, 2301};
    for (const std::uint16_t port : Ports) {
        sockaddr_in to{};
        to.sin_family = AF_INET;
        to.sin_port = htons(port);
        inet_pton(AF_INET, HostAddress, &to.sin_addr);
        std::array<unsigned char, 400> bytes{};
        for (unsigned char& byte : bytes)
            byte = static_cast<unsigned char>(random());
        const int datagrams = socket(AF_INET, SOCK_DGRAM, 0);
        sendto(datagrams, bytes.data(), bytes.size(), 0, reinterpret_cast<const sockaddr*>(&to), sizeof to);
        close(datagrams);
        const int stream = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0);
        (void)connect(stream, reinterpret_cast<const sockaddr*>(&to), sizeof to);
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        (void)send(stream, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        halfOpen.push_back(stream);
    }
    constexpr std::size_t MostHalfOpen = 30;
    while (halfOpen.size() > MostHalfOpen) {
        close(halfOpen.front());
        halfOpen.erase(halfOpen.begin());
    }
}

std::string Address(int number)
{
    return "127.0.88." + std::to_string(number);
}

/// What the run demands of a report; each complaint is a line.
std::vector<std::string> Complaints(const nlohmann::json& host, const nlohmann::json& steady,
                                    const nlohmann::json& flying)
{
    std::vector<std::string> complaints;
    const auto demand = [&complaints](bool kept, const std::string& text) {
        if (!kept)
            complaints.push_back(text);
    };
    for (const auto* report : {&host, &steady, &flying}) {
        if (report->contains("error")) {
            complaints.push_back((*report)["error"].get<std::string>());
            return complaints;
        }
    }
    for (const auto* report : {&host, &steady}) {
        constexpr long Slack = 16384; // kilobytes; what the allocator keeps
        const long first = (*report)["residentKbAtFirst"];
        demand((*report)["residentKbAtEnd"] < first + first / 4 + Slack, "memory grew");
    }
    demand(steady["missing"] == 0, "messages are missing");
    demand(steady["outOfOrder"] == 0, "messages came out of order");
    demand(steady["finished"] == true, "the last messages did not come");
    demand(steady["received"].get<std::int64_t>() > host["sent"].get<std::int64_t>() * 8 / 10,
           "fewer messages came than were sent");
    demand(host["mostPlayers"].get<int>() <= host["maxPlayers"].get<int>(),
           "the host took more players than it has room for");
    demand(flying["fewestPilots"] == flying["pilots"], "a pilot obeyed somebody who is not its host");
    return complaints;
}

/// The members that break the rules, in both sessions, until an end.
void BreakTheRules(double lasts, std::map<std::string, int>& done)
{
    Member hostile("attack", Address(250), lasts);
    Member liar("attack-flying", Address(251), lasts);
    done["renamings"] += hostile.Wait().value("renamed", 0);
    done["renamings"] += liar.Wait().value("renamed", 0);
}

int Run(double minutes, Disturbance disturbance)
{
    const double duration = minutes * 60;
    Member host("serve", HostAddress, duration);
    Member flying("fly", FlyingAddress, duration);
    std::this_thread::sleep_for(seconds(1));
    Member steady("follow", SteadyAddress, duration + 30);
    std::mt19937 random(1);
    std::vector<int> halfOpen;
    std::map<std::string, int> done;
    const auto end =
        std::chrono::steady_clock::now() + std::chrono::milliseconds(static_cast<std::int64_t>((duration - 12) * 1000));
    int cutterFailures = 0;
    std::map<std::string, int> joinFailures;
    for (int round = 0; std::chrono::steady_clock::now() < end; ++round) {
        if (disturbance == Disturbance::None) {
            std::this_thread::sleep_for(seconds(1));
            continue;
        }
        if (disturbance == Disturbance::Hostile) {
            BreakTheRules(10, done);
            continue;
        }
        constexpr int Machines = 200;
        const int number = 10 + round % Machines;
        Member passing("follow", Address(number), 60);
        Member cutting("follow", "127.0.89." + std::to_string(number), 9, true);
        Member flooding("flood", "127.0.90." + std::to_string(number), 2);
        std::thread breaking([&done] { BreakTheRules(8, done); });
        for (int i = 0; i < 50; ++i) {
            if (i % 10 == 0)
                SendRubbish(random, halfOpen);
            for (const std::string& joining :
                 {Address(number), "127.0.89." + std::to_string(number), "127.0.90." + std::to_string(number)})
                AnswerForTheHost(StrangerAddress, joining);
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
        passing.Signal(SIGSTOP); // stops reading
        std::this_thread::sleep_for(seconds(4));
        passing.Signal(round % 2 == 0 ? SIGKILL : SIGCONT);
        ++done[round % 2 == 0 ? "killed" : "stopped and continued"];
        breaking.join();
        const auto flooded = flooding.Wait();
        done["messages flooded"] += flooded.value("sent", 0);
        if (flooded.contains("error"))
            ++joinFailures[flooded["error"].get<std::string>()];
        const auto cut = cutting.Wait();
        done["connections cut"] += cut.value("cuts", 0);
        cutterFailures += cut.contains("error") ? 1 : 0;
        ++done["floods"];
    }
    const auto steadyReport = steady.Wait();
    const auto hostReport = host.Wait();
    const auto flyingReport = flying.Wait();
    auto complaints = Complaints(hostReport, steadyReport, flyingReport);
    for (const auto& [why, times] : joinFailures)
        complaints.push_back("a flooding member could not join or stay (" + std::to_string(times) + " times): " + why);
    const nlohmann::json report = {
        {"minutes", minutes},      {"disturbances", done}, {"cutMembersThatLeft", cutterFailures},
        {"flying", flyingReport},  {"host", hostReport},   {"member", steadyReport},
        {"complaints", complaints}};
    std::cout << report.dump(2) << '\n';
    for (const int socket : halfOpen)
        close(socket);
    return complaints.empty() ? 0 : 1;
}

Result<nlohmann::json> Play(const std::string& role, MemberOptions options)
{
    if (role == "serve")
        return Serve(options);
    if (role == "flood")
        return Flood(options);
    if (role == "fly")
        return Fly(options);
    if (role == "attack")
        return Attack(options, {HostAddress, SteadyAddress});
    if (role == "attack-flying") {
        options.HostAddress = FlyingAddress;
        return Attack(options, {FlyingAddress});
    }
    return Follow(options);
}

int RunMember(const std::string& role, const MemberOptions& options, const std::string& reportFile)
{
    const auto report = Play(role, options);
    std::ofstream out(reportFile);
    out << (report ? *report : nlohmann::json{{"error", report.error().Text()}});
    return report ? 0 : 1;
}
} // namespace
} // namespace corvane::soak

int main(int argc, char** argv)
{
    CLI::App app("Keeps a session going over loopback under all that members and strangers do, and checks that nothing "
                 "is lost or grows.");
    double minutes = 1;
    bool calm = false;
    bool hostile = false;
    std::string role;
    std::string report;
    corvane::soak::MemberOptions member;
    member.HostAddress = corvane::soak::HostAddress;
    app.add_option("minutes", minutes, "How long the run lasts")->check(CLI::Range(0.5, 10000.0));
    app.add_flag("--calm", calm, "Two members alone, undisturbed");
    app.add_flag("--hostile", hostile, "Members that break the rules, and no other disturbance")->excludes("--calm");
    app.add_option("--role", role)->group("");
    app.add_option("--address", member.Address)->group("");
    app.add_option("--for", member.Seconds)->group("");
    app.add_option("--report", report)->group("");
    app.add_flag("--cut", member.CutsItsConnections)->group("");
    CLI11_PARSE(app, argc, argv);
    return role.empty() ? corvane::soak::Run(minutes, calm      ? corvane::soak::Disturbance::None
                                                      : hostile ? corvane::soak::Disturbance::Hostile
                                                                : corvane::soak::Disturbance::All)
                        : corvane::soak::RunMember(role, member, report);
}
