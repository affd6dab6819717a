#include "session/CompositePeerFactory.h"

#include "net/memory/InMemoryNetwork.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {
/// Another connection type over the same kind of peers.
class OtherProvider final : public ConnectionProvider {
public:
    [[nodiscard]] std::string Name() const override { return "Other"; }
    [[nodiscard]] std::string Address() const override { return "other"; }
    Result<std::unique_ptr<SessionPeer>> DirectPlayCreate() override { return Fail("Other", "no network card"); }
};

TEST(CompositePeerFactory, ListsAllProvidersAndBecomesThePeerOfOne)
{
    InMemoryNetwork network;
    InMemoryProvider memory(network);
    OtherProvider other;
    CompositePeerFactory factory({&other, &memory});
    const auto peer = *factory.DirectPlayCreate();
    const auto entries = *peer->GetDPEnumConnections();
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].Name, "Other");
    EXPECT_EQ(entries[1].Name, "Practice session (simulated pilots)");
    EXPECT_EQ(peer->GetDPEnumPlayers().error().What, "GetDPEnumPlayers");
    EXPECT_FALSE(peer->InitializeConnection("nowhere"));
    EXPECT_EQ(peer->InitializeConnection("other").error().Why, "no network card");
    EXPECT_TRUE(peer->InitializeConnection(entries[1].Address));
    EXPECT_FALSE(peer->InitializeConnection(entries[1].Address));
    SessionEntry description;
    description.Name = "Traffic";
    ASSERT_TRUE(peer->Open(description, OpenCreate));
    const auto id = peer->CreatePlayer("Ann", "Player");
    ASSERT_TRUE(id);
    EXPECT_EQ(*peer->GetPlayerFriendlyName(*id), "Ann");
}
} // namespace
} // namespace corvane
