#include "session/MemberManners.h"

#include <cassert>

namespace corvane {
Bytes MemberManners::Introduction() const
{
    return m_announces ? EncodeMessage(AnnounceMessage{*m_announces, m_id}) : Bytes();
}

Bytes MemberManners::AnswerTo(MessageType request) const
{
    switch (request) {
    case MessageType::IdentifyRequest: return Introduction();
    case MessageType::AircraftInfoRequest: return m_aircraft;
    default: return {};
    }
}

std::vector<Bytes> MemberManners::RequestsForAdmission(bool again) const
{
    std::vector<Bytes> requests;
    if (again)
        requests.push_back(EncodeMessage(PlainMessage{MessageType::JoinRetry}));
    const bool asObserver = m_announces == MessageType::ObserverAnnounce;
    requests.push_back(
        EncodeMessage(PlainMessage{asObserver ? MessageType::ObserverJoinRequest : MessageType::JoinRequest}));
    return requests;
}

bool MemberManners::AsksForAdmission(MessageType message) noexcept
{
    return message == MessageType::JoinRequest || message == MessageType::ObserverJoinRequest;
}

Bytes MemberManners::Admission(MessageType request, PlayerId requester, bool admits)
{
    assert(AsksForAdmission(request));
    const bool asObserver = request == MessageType::ObserverJoinRequest;
    if (admits)
        return EncodeMessage(
            AnnounceMessage{asObserver ? MessageType::ObserverAnnounce : MessageType::PilotAnnounce, requester});
    return EncodeMessage(PlainMessage{asObserver ? MessageType::ObserverJoinRefused : MessageType::JoinRefused});
}

Bytes MemberManners::Farewell()
{
    return EncodeMessage(PlainMessage{MessageType::HostLeft});
}
} // namespace corvane
