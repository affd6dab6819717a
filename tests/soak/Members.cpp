#include "tests/soak/Members.h"

#include "core/Bytes.h"
#include "practice/PracticeSession.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <fstream>
#include <map>
#include <sys/resource.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace corvane::soak {
using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

namespace {
/// One numbered message. The clock is the machine's, so that it can be compared across processes.
struct Numbered {
    std::int32_t Type = 0x5001; ///< no message of the simulator
    std::int32_t Length = 48;
    std::int64_t Number = 0;
    std::int64_t SentNs = 0;
    std::int64_t Last = -1; ///< in a pilot's last message: how many went before
    std::array<std::byte, 24> Filling{};
};

std::int64_t NowNs()
{
    return std::chrono::nanoseconds(Clock::now().time_since_epoch()).count();
}

Bytes ToBytes(const Numbered& message)
{
    Bytes bytes(sizeof message);
    std::memcpy(bytes.data(), &message, sizeof message);
    return bytes;
}

/// One sender as its receiver has seen it.
struct Sender {
    std::int64_t Next = -1; ///< the number to come; the first one seen begins
    std::int64_t Received = 0;
    bool Finished = false;
};

/// The messages of all senders, checked as they come.
class Ledger {
public:
    void Take(const ReceivedMessage& received)
    {
        Numbered message;
        if (received.From == SystemSender || received.Content.size() != sizeof message)
            return;
        std::memcpy(&message, received.Content.data(), sizeof message);
        if (message.Type != Numbered().Type)
            return;
        Sender& sender = m_senders[received.From];
        if (message.Last >= 0) {
            sender.Finished = true;
            m_missing += sender.Next >= 0 ? message.Last - sender.Next : 0;
            return;
        }
        if (sender.Next >= 0 && message.Number > sender.Next)
            m_missing += message.Number - sender.Next;
        if (sender.Next >= 0 && message.Number < sender.Next)
            ++m_outOfOrder;
        sender.Next = message.Number + 1;
        ++sender.Received;
        m_latenciesUs.push_back(static_cast<double>(NowNs() - message.SentNs) / 1000);
    }
    [[nodiscard]] bool Finished() const
    {
        return !m_senders.empty() &&
               std::ranges::all_of(m_senders, [](const auto& one) { return one.second.Finished; });
    }
    nlohmann::json Report()
    {
        std::int64_t received = 0;
        for (const auto& [id, sender] : m_senders)
            received += sender.Received;
        std::ranges::sort(m_latenciesUs);
        const auto at = [this](double share) {
            return m_latenciesUs.empty()
                       ? 0.0
                       : m_latenciesUs[static_cast<std::size_t>(share * static_cast<double>(m_latenciesUs.size() - 1))];
        };
        return {{"senders", m_senders.size()}, {"received", received},   {"missing", m_missing},
                {"outOfOrder", m_outOfOrder},  {"finished", Finished()}, {"medianUs", at(0.5)},
                {"p99Us", at(0.99)},           {"longestUs", at(1.0)}};
    }

private:
    std::map<PlayerId, Sender> m_senders;
    std::int64_t m_missing = 0;
    std::int64_t m_outOfOrder = 0;
    std::vector<double> m_latenciesUs;
};

Result<std::unique_ptr<DirectPlayPeer>> ReadyPeer(const MemberOptions& options)
{
    DirectPlayOptions network;
    network.BindAddress = options.Address;
    network.HostAddress = options.HostAddress;
    network.MustBeFound = true;
    auto peer = std::make_unique<DirectPlayPeer>(network);
    if (const auto ready = peer->InitializeConnection(DirectPlayConnectionAddress); !ready)
        return ready.error();
    return peer;
}

/// Takes all messages that wait.
Result<void> Drain(DirectPlayPeer& peer, PlayerId id, Ledger* ledger)
{
    const auto count = peer.GetMessageCount(id);
    if (!count)
        return count.error();
    for (int i = 0; i < *count; ++i) {
        const auto message = peer.Receive();
        if (!message)
            return message.error();
        if (ledger != nullptr)
            ledger->Take(*message);
    }
    return {};
}

/// Breaks every TCP connection of this process, as a router that forgets them would.
void CutConnections()
{
    constexpr int MostDescriptors = 256;
    for (int fd = 3; fd < MostDescriptors; ++fd) {
        sockaddr_storage remote{};
        socklen_t length = sizeof remote;
        int type = 0;
        socklen_t typeLength = sizeof type;
        if (getsockopt(fd, SOL_SOCKET, SO_TYPE, &type, &typeLength) == 0 && type == SOCK_STREAM &&
            getpeername(fd, reinterpret_cast<sockaddr*>(&remote), &length) == 0 && remote.ss_family == AF_INET)
            shutdown(fd, SHUT_RDWR);
    }
}
} // namespace

Result<JoinedMember> JoinAs(const MemberOptions& options, const char* name)
{
    auto peer = ReadyPeer(options);
    if (!peer)
        return peer.error();
    const auto found = (*peer)->GetDPEnumSessions(0, EnumSessionsAvailable);
    if (!found)
        return found.error();
    if (found->empty())
        return Fail(options.HostAddress, "no session was found");
    if (const auto opened = (*peer)->Open(found->front(), OpenJoin); !opened)
        return opened.error();
    const auto id = (*peer)->CreatePlayer(name, "Player");
    if (!id)
        return id.error();
    return JoinedMember{*std::move(peer), *id};
}

double ProcessorSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

long ResidentKb()
{
    std::ifstream status("/proc/self/statm");
    long pages = 0;
    status >> pages >> pages;
    return pages * (sysconf(_SC_PAGESIZE) / 1024);
}

Result<nlohmann::json> Serve(const MemberOptions& options)
{
    auto ready = ReadyPeer(options);
    if (!ready)
        return ready.error();
    DirectPlayPeer& peer = **ready;
    constexpr std::int32_t MaxPlayers = 200;
    if (const auto opened = peer.Open({"Soak", 0, MaxPlayers, "", SessionKeepAlive, ""}, OpenCreate); !opened)
        return opened.error();
    std::vector<PlayerId> pilots;
    for (int i = 0; i < options.Pilots; ++i) {
        const auto id = peer.CreatePlayer("Pilot " + std::to_string(i), "Player");
        if (!id)
            return id.error();
        pilots.push_back(*id);
    }
    const auto start = Clock::now();
    const auto end = start + milliseconds(static_cast<std::int64_t>(options.Seconds * 1000));
    Numbered message;
    long residentAtFirst = 0;
    std::size_t mostPlayers = 0;
    const double processorAtFirst = ProcessorSeconds();
    for (; Clock::now() < end; ++message.Number) {
        message.SentNs = NowNs();
        for (const PlayerId pilot : pilots) {
            if (const auto sent = peer.Send(pilot, AllPlayers, SendGuaranteed, ToBytes(message)); !sent)
                return sent.error();
            if (const auto drained = Drain(peer, pilot, nullptr); !drained)
                return drained.error();
        }
        if (const auto players = peer.GetDPEnumPlayers(); players && message.Number % options.Rate == 0)
            mostPlayers = std::max(mostPlayers, players->size());
        if (residentAtFirst == 0 && Clock::now() - start > (end - start) / 5)
            residentAtFirst = ResidentKb();
        std::this_thread::sleep_until(start + milliseconds(1000 / options.Rate) * (message.Number + 1));
    }
    const double processor = ProcessorSeconds() - processorAtFirst;
    message.Last = message.Number;
    for (const PlayerId pilot : pilots)
        (void)peer.Send(pilot, AllPlayers, SendGuaranteed, ToBytes(message));
    const auto members = [&] {
        const auto players = peer.GetDPEnumPlayers();
        return players ? players->size() : 0;
    };
    for (int tenths = 0; tenths < 100 && members() > pilots.size(); ++tenths)
        std::this_thread::sleep_for(milliseconds(100));
    const auto counters = peer.Counters();
    return nlohmann::json{{"sent", message.Number * options.Pilots},
                          {"residentKbAtFirst", residentAtFirst},
                          {"residentKbAtEnd", ResidentKb()},
                          {"mostPlayers", mostPlayers},
                          {"maxPlayers", MaxPlayers},
                          {"processorShare", processor / options.Seconds},
                          {"packetsDropped", counters.TotalDropped()}};
}

Result<nlohmann::json> Follow(const MemberOptions& options)
{
    constexpr int ConnectionsLast = 7; ///< seconds between two cuts
    auto joined = JoinAs(options, "Follower");
    if (!joined)
        return joined.error();
    Ledger ledger;
    const auto start = Clock::now();
    const auto end = start + milliseconds(static_cast<std::int64_t>(options.Seconds * 1000));
    long residentAtFirst = 0;
    int cuts = 0;
    while (Clock::now() < end && !ledger.Finished()) {
        if (const auto drained = Drain(*joined->Peer, joined->Id, &ledger); !drained)
            return drained.error();
        if (residentAtFirst == 0 && Clock::now() - start > (end - start) / 5)
            residentAtFirst = ResidentKb();
        if (options.CutsItsConnections && Clock::now() - start > std::chrono::seconds(ConnectionsLast) * (cuts + 1)) {
            CutConnections();
            ++cuts;
        }
        std::this_thread::sleep_for(milliseconds(1));
    }
    nlohmann::json report = ledger.Report();
    report["residentKbAtFirst"] = residentAtFirst;
    report["residentKbAtEnd"] = ResidentKb();
    report["cuts"] = cuts;
    report["processorShare"] =
        ProcessorSeconds() / std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return report;
}

Result<nlohmann::json> Flood(const MemberOptions& options)
{
    auto joined = JoinAs(options, "Flooder");
    if (!joined)
        return joined.error();
    const auto end = Clock::now() + milliseconds(static_cast<std::int64_t>(options.Seconds * 1000));
    const Bytes message(200);
    std::int64_t sent = 0;
    for (; Clock::now() < end; ++sent) {
        const bool guaranteed = sent % 2 == 0;
        if (const auto flooded = joined->Peer->Send(joined->Id, AllPlayers, guaranteed ? SendGuaranteed : 0, message);
            !flooded)
            return flooded.error();
        while (joined->Peer->Congested() && Clock::now() < end)
            std::this_thread::sleep_for(milliseconds(1));
        if (const auto drained = Drain(*joined->Peer, joined->Id, nullptr); !drained)
            return drained.error();
    }
    return nlohmann::json{{"sent", sent}};
}

Result<nlohmann::json> Fly(const MemberOptions& options)
{
    constexpr int Pilots = 5;
    DirectPlayOptions network;
    network.BindAddress = options.Address;
    network.MustBeFound = true;
    DirectPlayProvider provider(network);
    const auto grid = std::make_unique<MagVarGrid>();
    auto session = PracticeSession::Create(provider, PracticeScene({}, {}, {}, {47, 8}), *grid,
                                           {.Pilots = Pilots,
                                            .Observers = 0,
                                            .SessionName = "Flying",
                                            .PeerForEach = false,
                                            .ComeAndGo = false,
                                            .HostStaysS = -1});
    if (!session)
        return session.error();
    std::size_t fewest = Pilots;
    const auto start = Clock::now();
    while (Clock::now() - start < std::chrono::duration<double>(options.Seconds)) {
        (*session)->Advance(std::chrono::duration<double>(Clock::now() - start).count());
        fewest = std::min(fewest, (*session)->Members().size());
        std::this_thread::sleep_for(milliseconds(20));
    }
    (*session)->End();
    return nlohmann::json{{"pilots", Pilots}, {"fewestPilots", fewest}};
}
} // namespace corvane::soak
