#include "tests/soak/Hostile.h"

#include "net/wire/WireEncode.h"
#include "session/MessageCodec.h"

#include <arpa/inet.h>
#include <chrono>
#include <netinet/in.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace corvane::soak {
using directplay::EncodeMessage;
using directplay::WireId;
using Clock = std::chrono::steady_clock;

namespace {
constexpr std::uint16_t Port = 2300;

/// A bare connection from one address to another's stream port.
class BareStream {
public:
    BareStream(const std::string& from, const std::string& to) : m_socket(socket(AF_INET, SOCK_STREAM, 0))
    {
        const sockaddr_in own = Address(from, 0);
        const sockaddr_in other = Address(to, Port);
        timeval patience{.tv_sec = 5, .tv_usec = 0};
        setsockopt(m_socket, SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
        m_open = bind(m_socket, reinterpret_cast<const sockaddr*>(&own), sizeof own) == 0 &&
                 connect(m_socket, reinterpret_cast<const sockaddr*>(&other), sizeof other) == 0;
    }
    BareStream(BareStream&& other) noexcept : m_socket(std::exchange(other.m_socket, -1)), m_open(other.m_open) {}
    BareStream(const BareStream&) = delete;
    BareStream& operator=(const BareStream&) = delete;
    BareStream& operator=(BareStream&&) = delete;
    ~BareStream()
    {
        if (m_socket >= 0)
            close(m_socket);
    }

    /// Returns the bytes that went out.
    std::size_t Send(const Bytes& message)
    {
        m_open = m_open &&
                 send(m_socket, message.data(), message.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(message.size());
        return m_open ? message.size() : 0;
    }

private:
    static sockaddr_in Address(const std::string& ip, std::uint16_t port)
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        inet_pton(AF_INET, ip.c_str(), &address.sin_addr);
        return address;
    }

    int m_socket;
    bool m_open = false;
};

Bytes Creation(WireId id)
{
    directplay::PackedPlayer record;
    record.Id = id;
    record.ShortName.assign(400, u'x');
    return EncodeMessage(directplay::CreatePlayerMessage{record}, Port);
}

/// "You have been removed", and more of that kind, to everybody.
Result<void> Lie(DirectPlayPeer& peer, PlayerId own)
{
    for (const MessageType type : {MessageType::RemovedByHost, MessageType::JoinRefused, MessageType::HostLeft})
        if (auto sent = peer.Send(own, AllPlayers, SendGuaranteed, EncodeMessage(PlainMessage{type})); !sent)
            return sent;
    return {};
}
} // namespace

Result<nlohmann::json> Attack(const MemberOptions& options, const std::vector<std::string>& targets)
{
    constexpr WireId First = 0x40000000;
    constexpr WireId Players = 4096;
    constexpr std::size_t BytesASecond = 10240;
    auto joined = JoinAs(options, "Hostile");
    if (!joined)
        return joined.error();
    std::vector<BareStream> streams;
    for (const std::string& target : targets)
        streams.emplace_back(options.Address, target);
    const auto start = Clock::now();
    const auto end = start + std::chrono::milliseconds(static_cast<std::int64_t>(options.Seconds * 1000));
    for (WireId i = 0; i < Players; ++i)
        for (BareStream& stream : streams)
            stream.Send(Creation(First + i));
    std::int64_t renamed = 0;
    const auto renaming = Clock::now();
    for (std::size_t bytes = 0; Clock::now() < end; ++renamed) {
        const std::u16string name(1 + static_cast<std::size_t>(renamed % 40), u'y');
        const Bytes rename = EncodeMessage(directplay::PlayerNameChanged{First, name, u""}, Port);
        for (BareStream& stream : streams)
            stream.Send(rename);
        bytes += rename.size();
        if (renamed % 100 == 0)
            if (const auto lied = Lie(*joined->Peer, joined->Id); !lied)
                return lied.error();
        while (joined->Peer->Receive()) {
        }
        std::this_thread::sleep_until(renaming + std::chrono::milliseconds(bytes * 1000 / BytesASecond));
    }
    return nlohmann::json{{"renamed", renamed}};
}

void AnswerForTheHost(const std::string& stranger, const std::string& address)
{
    BareStream stream(stranger, address);
    directplay::SuperEnumPlayersReply table{{}, u"Mine", u"", {}, {}};
    const std::uint32_t host = directplay::PlayerIsSystem | directplay::PlayerIsNameServer;
    table.Players.push_back({host, 0x77, directplay::OwnVersion, {}, {}, {}, std::nullopt, {}, 0});
    for (const directplay::WireMessage& reply :
         {directplay::WireMessage{directplay::RequestPlayerReply{0, directplay::ResultNoNewPlayers}},
          directplay::WireMessage{directplay::RequestPlayerReply{0x55, directplay::ResultOk}},
          directplay::WireMessage{directplay::AddForwardReply{directplay::ResultInvalidPassword}},
          directplay::WireMessage{table}})
        stream.Send(EncodeMessage(reply, Port));
}
} // namespace corvane::soak
