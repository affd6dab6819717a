#include "net/DirectPlayPeer.h"
#include "net/wire/WireText.h"

/// Players, groups and messages of the open session.
namespace corvane {
using directplay::Millis;
using directplay::PeerMachine;
using directplay::WideFromWindows1252;
using directplay::WireId;

Result<PlayerId> DirectPlayPeer::CreatePlayer(std::string_view friendlyName, std::string_view formalName)
{
    constexpr const char* Operation = "CreatePlayer";
    if (const auto session = RequireSession(Operation); !session)
        return session.error();
    for (const std::string_view name : {friendlyName, formalName}) {
        if (auto fits = CheckText(Operation, name); !fits)
            return fits.error();
    }
    const auto id = Request(Operation, [&](PeerMachine& machine, Millis now) {
        machine.CreatePlayer(WideFromWindows1252(friendlyName), WideFromWindows1252(formalName), now);
    });
    if (!id)
        return id.error();
    return static_cast<PlayerId>(*id);
}

Result<void> DirectPlayPeer::SetPlayerName(PlayerId player, std::string_view friendlyName)
{
    constexpr const char* Operation = "SetPlayerName";
    if (const auto session = RequireSession(Operation); !session)
        return session.error();
    if (auto fits = CheckText(Operation, friendlyName); !fits)
        return fits;
    Result<void> result;
    m_network->Run([&](PeerMachine& machine, Millis /*now*/) {
        result = machine.SetPlayerName(static_cast<WireId>(player), WideFromWindows1252(friendlyName));
    });
    return result ? result : Because(Operation, result.error());
}

Result<std::int32_t> DirectPlayPeer::CreateGroup(std::string_view shortName)
{
    constexpr const char* Operation = "CreateGroup";
    if (const auto session = RequireSession(Operation); !session)
        return session.error();
    if (auto fits = CheckText(Operation, shortName); !fits)
        return fits.error();
    const auto id = Request(
        Operation, [&](PeerMachine& machine, Millis now) { machine.CreateGroup(WideFromWindows1252(shortName), now); });
    if (!id)
        return id.error();
    return static_cast<std::int32_t>(*id);
}

Result<std::vector<SessionMember>> DirectPlayPeer::GetDPEnumGroups()
{
    const auto session = RequireSession("GetDPEnumGroups");
    if (!session)
        return session.error();
    return m_network->Members().Groups();
}

Result<void> DirectPlayPeer::AddPlayerToGroup(std::int32_t group, PlayerId player)
{
    constexpr const char* Operation = "AddPlayerToGroup";
    if (const auto session = RequireSession(Operation); !session)
        return session.error();
    Result<void> result;
    m_network->Run([&](PeerMachine& machine, Millis /*now*/) {
        result = machine.AddPlayerToGroup(static_cast<WireId>(player), static_cast<WireId>(group));
    });
    return result ? result : Because(Operation, result.error());
}

Result<std::vector<SessionMember>> DirectPlayPeer::GetDPEnumPlayers()
{
    const auto session = RequireSession("GetDPEnumPlayers");
    if (!session)
        return session.error();
    return m_network->Members().Players();
}

Result<std::int32_t> DirectPlayPeer::GetMessageCount(PlayerId player)
{
    constexpr const char* Operation = "GetMessageCount";
    // The picture first: a message that arrives in between must not be taken for the end of the session.
    const auto session = RequireSession(Operation);
    const std::size_t count = m_network ? m_network->Queue().CountFor(player) : 0;
    if (count > 0)
        return static_cast<std::int32_t>(count);
    if (!session)
        return session.error();
    if (!m_network->Members().IsOwn(player))
        return Fail(Operation, "player " + std::to_string(player) + " is not one of this machine's");
    return 0;
}

Result<ReceivedMessage> DirectPlayPeer::Receive()
{
    constexpr const char* Operation = "Receive";
    const auto session = RequireSession(Operation);
    auto message = m_network ? m_network->Queue().Pop() : std::nullopt;
    if (!message && !session)
        return session.error();
    if (!message)
        return Fail(Operation, "no message waits");
    m_network->OnTaken();
    return std::move(*message);
}

Result<void> DirectPlayPeer::Send(PlayerId from, PlayerId to, std::uint32_t flags, ByteSpan message)
{
    constexpr const char* Operation = "Send";
    constexpr std::size_t Largest = directplay::MaxMessageSize - directplay::HeaderSize - directplay::SignaturePart;
    const auto session = RequireSession(Operation);
    if (!session)
        return session.error();
    if (!m_network->Members().IsOwn(from))
        return Fail(Operation, "player " + std::to_string(from) + " is not one of this machine's");
    if (message.size() > Largest)
        return Fail(Operation, "a message of " + std::to_string(message.size()) + " bytes is too large");
    if (!m_network->Send(static_cast<WireId>(from), static_cast<WireId>(to), (flags & SendGuaranteed) != 0,
                         Bytes(message.begin(), message.end())))
        return Fail(Operation, "too much waits to be sent already");
    return {};
}

Result<std::string> DirectPlayPeer::GetPlayerFriendlyName(PlayerId player)
{
    constexpr const char* Operation = "GetPlayerFriendlyName";
    const auto session = RequireSession(Operation);
    if (!session)
        return session.error();
    auto name = m_network->Members().NameOf(player);
    if (!name)
        return Fail(Operation, "player " + std::to_string(player) + " is unknown in this session");
    return *std::move(name);
}

Result<void> DirectPlayPeer::DestroyPlayer(PlayerId player)
{
    constexpr const char* Operation = "DestroyPlayer";
    if (const auto session = RequireSession(Operation); !session)
        return session.error();
    Result<void> result;
    m_network->Run(
        [&](PeerMachine& machine, Millis /*now*/) { result = machine.DestroyPlayer(static_cast<WireId>(player)); });
    if (!result)
        return Because(Operation, result.error());
    m_network->Queue().Drop(player);
    return {};
}
} // namespace corvane
