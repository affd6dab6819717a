#include "session/PlayerTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane {
namespace {
using testing::ElementsAre;

std::vector<std::size_t> Found(const PlayerTable& players, std::int32_t id, std::string_view name)
{
    std::vector<std::size_t> indices;
    for (auto index = players.FindPlayer(id, name); index; index = players.FindNextPlayer(*index))
        indices.push_back(*index);
    return indices;
}

TEST(PlayerTable, KnowsAMemberByNameAndId)
{
    PlayerTable players;
    players.Append("Ann", 1, PilotRole);
    players.Append("Ann", 2, PilotRole);
    players.Append("Bob", 1, PilotRole);
    players.Append("Ann", 1, ObserverRole);
    EXPECT_THAT(Found(players, 1, "Ann"), ElementsAre(0, 3));
    EXPECT_THAT(Found(players, 2, "Ann"), ElementsAre(1));
    EXPECT_THAT(Found(players, 2, "Bob"), ElementsAre());
    EXPECT_THAT(Found(players, 3, "Ann"), ElementsAre());
}

TEST(PlayerTable, RemovingKeepsTheOthersInOrder)
{
    PlayerTable players;
    for (std::int32_t id = 0; id < 6; ++id)
        players.Append("P", id, PilotRole);
    players.Players()[4].CruiseAltitude = 350;
    const std::vector<std::size_t> gone{0, 3, 5};
    players.Remove(gone);
    ASSERT_EQ(players.PlayerCount(), 3U);
    EXPECT_EQ(players.Players()[0].PlayerId, 1);
    EXPECT_EQ(players.Players()[1].PlayerId, 2);
    EXPECT_EQ(players.Players()[2].PlayerId, 4);
    EXPECT_EQ(players.Players()[2].CruiseAltitude, 350);
    EXPECT_THAT(Found(players, 4, "P"), ElementsAre(2));
    EXPECT_FALSE(players.HasId(3));
    players.Empty();
    EXPECT_EQ(players.PlayerCount(), 0U);
    EXPECT_FALSE(players.HasId(4));
}
} // namespace
} // namespace corvane
