#include "session/MemberManners.h"

#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {
std::string NameOf(const Bytes& message)
{
    if (message.empty())
        return "";
    const auto decoded = DecodeMessage(message);
    const auto* announce = decoded ? std::get_if<AnnounceMessage>(&*decoded) : nullptr;
    return std::string(MessageTypeName(DecodeHeader(message)->Type)) +
           (announce != nullptr ? " " + std::to_string(announce->PlayerId) : "");
}

struct MannersCase {
    const char* Name;
    std::optional<MessageType> Announces;
    const char* Identified;
    const char* Asked;
};
TEST(MemberMannersTest, FollowTheMembersKind)
{
    for (const MannersCase& c :
         {MannersCase{"Pilot", MessageType::PilotAnnounce, "PilotAnnounce 7", "JoinRequest"},
          {"Observer", MessageType::ObserverAnnounce, "ObserverAnnounce 7", "ObserverJoinRequest"},
          {"Silent", std::nullopt, "", "JoinRequest"}}) {
        MemberManners manners(7, c.Announces);
        EXPECT_EQ(NameOf(manners.AnswerTo(MessageType::IdentifyRequest)), c.Identified) << c.Name;
        EXPECT_EQ(NameOf(manners.AnswerTo(MessageType::AircraftInfoRequest)), "") << c.Name;
        EXPECT_EQ(NameOf(manners.AnswerTo(MessageType::JoinRequest)), "") << c.Name;
        const auto again = manners.RequestsForAdmission(true);
        ASSERT_EQ(again.size(), 2U) << c.Name;
        EXPECT_EQ(NameOf(again[0]), "JoinRetry") << c.Name;
        EXPECT_EQ(NameOf(again[1]), c.Asked) << c.Name;
        manners.SetAircraft(EncodeMessage(AircraftInfoMessage{"Jet Plane", "737"}));
        EXPECT_EQ(NameOf(manners.AnswerTo(MessageType::AircraftInfoRequest)), "AircraftInfo") << c.Name;
    }
}

TEST(MemberMannersTest, AHostAnswersEachRequestInItsKind)
{
    EXPECT_EQ(NameOf(MemberManners::Admission(MessageType::JoinRequest, 9, true)), "PilotAnnounce 9");
    EXPECT_EQ(NameOf(MemberManners::Admission(MessageType::ObserverJoinRequest, 9, true)), "ObserverAnnounce 9");
    EXPECT_EQ(NameOf(MemberManners::Admission(MessageType::JoinRequest, 9, false)), "JoinRefused");
    EXPECT_EQ(NameOf(MemberManners::Admission(MessageType::ObserverJoinRequest, 9, false)), "ObserverJoinRefused");
    EXPECT_FALSE(MemberManners::AsksForAdmission(MessageType::JoinRetry));
}
} // namespace
} // namespace corvane
