#include "net/machine/SessionSearch.h"

#include <algorithm>

namespace corvane::directplay {
void SessionSearch::Begin(const EnumerateRequest& request, Millis now)
{
    constexpr std::uint32_t WireFlags = EnumAvailable | EnumAll | EnumPasswordRequired;
    const PeerTimers& timers = m_common.Config.Timers;
    m_found.clear();
    m_endsWithAnswers = request.Host && request.Time.count() <= 0;
    m_askedIp = request.Host ? request.Host->Ip : 0;
    const std::uint32_t flags = request.Flags == 0 ? EnumAvailable : request.Flags & WireFlags;
    const Bytes message = m_common.Encoded(EnumSessions{request.Application, request.Password, flags});
    const SocketAddress to = request.Host.value_or(request.Broadcast);
    m_common.Output.SendDatagram(to, message);
    // Datagrams get lost; a host that was asked twice is listed once.
    m_common.Request = {.Kind = RequestKind::Enumerate,
                        .Deadline = now + (request.Time.count() > 0 ? request.Time : timers.Enumeration),
                        .Repeats = {{now + timers.FirstRepeat, to, message}, {now + timers.SecondRepeat, to, message}},
                        .Stream = request.Host};
    if (request.Host)
        m_common.Output.SendStream(*request.Host, message);
}

const FoundSession* SessionSearch::Find(const Guid& instance) const
{
    const auto found =
        std::ranges::find_if(m_found, [&](const FoundSession& one) { return one.Description.Instance == instance; });
    return found == m_found.end() ? nullptr : &*found;
}

bool SessionSearch::Handle(const Origin& origin, const EnumSessionsReply& message, Millis now)
{
    if (m_common.Request.Kind != RequestKind::Enumerate || origin.StatedPort == 0)
        return m_common.Drop(DropReason::Stranger);
    if (m_askedIp != 0 && origin.Remote.Ip != m_askedIp)
        return m_common.Drop(DropReason::Stranger); // nobody has asked this machine
    // It may come on the connection that we opened to the enumeration port: what it states counts.
    const SocketAddress host{origin.Remote.Ip, origin.StatedPort};
    const FoundSession found{message.Description, message.Name, host};
    const auto known = std::ranges::find_if(
        m_found, [&](const FoundSession& one) { return one.Description.Instance == message.Description.Instance; });
    const bool isNew = known == m_found.end();
    const auto ofSource =
        std::ranges::count_if(m_found, [&](const FoundSession& one) { return one.Host.Ip == host.Ip; });
    if (!isNew && known->Host.Ip != host.Ip)
        return m_common.Drop(DropReason::Stranger); // another machine's session, passed off as its own
    if (!isNew)
        *known = found;
    else if (m_found.size() < MaxSessionsListed && static_cast<std::size_t>(ofSource) < MaxSessionsPerSource)
        m_found.push_back(found);
    else
        return m_common.Drop(DropReason::Flooding);
    if (m_endsWithAnswers && isNew)
        m_common.Request.Deadline = std::min(m_common.Request.Deadline, now + m_common.Config.Timers.Settle);
    return false;
}

void SessionSearch::Tick(Millis now)
{
    auto& repeats = m_common.Request.Repeats;
    for (auto repeat = repeats.begin(); repeat != repeats.end();) {
        if (repeat->At > now) {
            ++repeat;
            continue;
        }
        m_common.Output.SendDatagram(repeat->To, repeat->Message);
        repeat = repeats.erase(repeat);
    }
}
} // namespace corvane::directplay
