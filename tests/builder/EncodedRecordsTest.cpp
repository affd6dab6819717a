#include "builder/EncodedRecords.h"

#include <gtest/gtest.h>

namespace corvane {
static void AddAirports(EncodedRecords& records)
{
    AirportRecord airport;
    for (std::size_t i = 0; i < 2 * EncodedRecords::SpillBytes / 600; ++i) {
        airport.Name.assign(400 + i % 300, 'N');
        records.AddAirport(airport);
    }
}

TEST(EncodedRecords, GiveAwayWhatHasGrownLargeAndStandAsIfTheyHadNot)
{
    EncodedRecords whole;
    AddAirports(whole);

    Bytes file;
    std::int32_t spilled = 0;
    const auto append = [&](EncodedRecords& records) {
        ASSERT_TRUE(records.MoveAirports(static_cast<std::int64_t>(file.size())));
        file.insert(file.end(), records.Airports.begin(), records.Airports.end());
        spilled += records.Counts.Airports;
        records.Clear();
    };
    EncodedRecords spilling(append);
    AddAirports(spilling);
    EXPECT_GT(spilled, 0);
    append(spilling);
    EXPECT_EQ(spilled, whole.Counts.Airports);
    EXPECT_EQ(file, whole.Airports);
}
} // namespace corvane
