#include "practice/MemberMessages.h"

#include "practice/Addressee.h"

#include <algorithm>
#include <utility>

namespace corvane {
/// A line that nobody understands, in place of one that may be meant for several, so that it is asked back.
static constexpr const char* NotForOne = "which of us";

/// Whether a line asks somebody to fly or taxi.
static bool IsOrder(const ParsedLine& line) noexcept
{
    return std::any_of(line.Instructions.begin(), line.Instructions.end(), [](const Instruction& instruction) {
        return instruction.Kind <= InstructionKind::Approach && instruction.Kind != InstructionKind::Hold;
    });
}

void MemberMessages::ReceiveAll()
{
    std::vector<std::shared_ptr<SessionPeer>> peers; // shares, since answering may remove members
    for (const auto& member : m_crew.Members()) {
        const auto peer = member->SharePeer();
        if (std::find(peers.begin(), peers.end(), peer) == peers.end())
            peers.push_back(peer);
        if (!m_setting.PeerForEach)
            break;
    }
    for (const auto& peer : peers)
        ReceiveOn(*peer);
}

/// Exactly the messages that wait now, so that members who answer one another cannot keep the call going.
void MemberMessages::ReceiveOn(SessionPeer& peer)
{
    constexpr std::int64_t MostAtOnce = 65536;
    std::int64_t waiting = 0;
    for (const auto& member : m_crew.Members()) {
        if (&member->Peer() != &peer)
            continue;
        const auto count = peer.GetMessageCount(member->Id());
        if (!count)
            member->SetLost();
        else
            waiting += *count;
    }
    waiting = std::min(waiting, MostAtOnce);
    for (std::int64_t i = 0; i < waiting; ++i) {
        const auto message = peer.Receive();
        if (!message)
            return; // fewer than counted, or the next count says that the session is gone
        for (const auto& member : m_crew.Members())
            if (&member->Peer() == &peer && member->Id() == message->To)
                Handle(*member, *message);
    }
}

/// Only the host admits, refuses and removes; anybody may say that it does.
bool MemberMessages::IsFromHost(const ReceivedMessage& message) const noexcept
{
    return m_crew.Host() != nullptr && message.From == m_crew.Host()->Id();
}

/// Those who are in the session, the one who asks included, must not be more than it takes. Where the transport does
/// not say who is there, it has let the player in, and that decides.
bool MemberMessages::HasRoom() const
{
    const auto players = m_crew.Host()->Peer().GetDPEnumPlayers();
    return !players || static_cast<std::int64_t>(players->size()) <= m_setting.MaxPlayers;
}

void MemberMessages::Handle(PracticeMember& member, const ReceivedMessage& message)
{
    const auto header = DecodeHeader(message.Content);
    if (!header || message.From == 0) // malformed, or the transport's own
        return;
    switch (header->Type) {
    case MessageType::JoinRequest:
    case MessageType::ObserverJoinRequest:
        if (&member == m_crew.Host())
            member.Admit(message.From, header->Type, HasRoom());
        break;
    case MessageType::PilotAnnounce:
    case MessageType::ObserverAnnounce: HandleAnnounce(member, *header, message); break;
    case MessageType::JoinRefused:
    case MessageType::ObserverJoinRefused:
        if (!member.Admitted && IsFromHost(message))
            member.Leave();
        break;
    case MessageType::IdentifyRequest:
    case MessageType::AircraftInfoRequest:
        if (member.Admitted)
            member.Answer(message.From, header->Type);
        break;
    case MessageType::RemovedByHost:
        if (&member != m_crew.Host() && IsFromHost(message))
            member.Leave();
        break;
    case MessageType::ChatText: HandleChat(member, *header, message); break;
    default: break;
    }
}

void MemberMessages::HandleAnnounce(PracticeMember& member, const MessageHeader& header,
                                    const ReceivedMessage& message) const
{
    if (member.Admitted || !IsFromHost(message))
        return;
    const auto announce = DecodeAnnounce(header, message.Content);
    if (announce && announce->PlayerId == member.Id())
        member.EnterAdmitted(m_setting.Group);
}

void MemberMessages::HandleChat(PracticeMember& member, const MessageHeader& header,
                                const ReceivedMessage& message) const
{
    // What the practice pilots say themselves is for the controller; they would answer one another for ever.
    if (!member.IsPilot() || m_crew.Has(message.From))
        return;
    const auto chat = DecodeChatText(header, message.Content);
    if (!chat)
        return;
    std::vector<std::string> callsigns;
    std::size_t own = 0;
    for (const auto& other : m_crew.Members()) {
        if (!other->IsPilot())
            continue;
        if (other.get() == &member)
            own = callsigns.size();
        callsigns.push_back(other->Name());
    }
    const auto addressee = FindAddressee(chat->Text, callsigns);
    if (!addressee) {
        // Nobody is named: one of them asks back, where it was an instruction.
        if (own == 0 && IsOrder(ParseInstructions(chat->Text)))
            member.Hear(NotForOne);
    } else if (addressee->Index == own)
        member.Hear(addressee->Ambiguous ? NotForOne : addressee->Rest);
}
} // namespace corvane
