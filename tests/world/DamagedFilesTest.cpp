#include "core/File.h"
#include "core/MagVarGrid.h"
#include "tests/core/TemporaryFolder.h"
#include "world/WorldImport.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <random>

namespace corvane {
namespace {
namespace fs = std::filesystem;

std::string ContentOf(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

struct Damage {
    const char* Name;
    /// Damages a file, differently for each number.
    std::string (*Do)(std::string text, std::uint32_t number);
};

std::string Cut(std::string text, std::uint32_t number)
{
    text.resize(text.size() * number / 40);
    return text;
}
std::string Flip(std::string text, std::uint32_t number)
{
    std::minstd_rand random(number + 1);
    for (int i = 0; i < 20; ++i)
        text[random() % text.size()] ^= static_cast<char>(1U << random() % 8);
    return text;
}
std::string RemoveLines(std::string text, std::uint32_t number)
{
    std::minstd_rand random(number + 1);
    std::string left;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size() - 1) + 1;
        if (random() % 5 != 0)
            left.append(text, at, end - at);
        at = end;
    }
    return left;
}
std::string ShuffleLines(std::string text, std::uint32_t number)
{
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size() - 1) + 1;
        lines.push_back(text.substr(at, end - at));
        at = end;
    }
    std::ranges::shuffle(lines, std::minstd_rand(number + 1));
    std::string mixed;
    for (const std::string& line : lines)
        mixed += line;
    return mixed;
}
/// Latin letters become high bytes, the ends of lines stay.
std::string SpoilLetters(std::string text, std::uint32_t number)
{
    for (char& c : text) {
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c + 100 + static_cast<int>(number % 30));
    }
    return text;
}
std::string MakeUtf16(std::string text, std::uint32_t number)
{
    std::string wide = number % 2 == 0 ? "\xFF\xFE" : "";
    for (const char c : text)
        wide.append(1, c).append(1, '\0');
    return wide;
}
std::string OldMacLineEnds(std::string text, std::uint32_t /*number*/)
{
    std::ranges::replace(text, '\n', '\r');
    return text;
}

class DamagedFile : public testing::TestWithParam<Damage> {};

/// Either a database with what could be read, or one error that names the file and nothing written.
TEST_P(DamagedFile, IsReadAsFarAsItGoesOrRefused)
{
    constexpr std::uint32_t Times = 12;
    const std::vector<std::int16_t> grid(MagVarGrid::CellCount);
    for (const char* const name : {"apt.dat", "nav.dat", "nav1200.dat", "airspaces.openair"}) {
        const std::string whole = ContentOf(fs::path(CORVANE_WORLD_DATA) / name);
        ASSERT_FALSE(whole.empty());
        for (std::uint32_t number = 0; number < Times; ++number) {
            const TemporaryFolder folder;
            const fs::path file = folder.Path() / name;
            std::ofstream(file, std::ios::binary) << GetParam().Do(whole, number);
            WorldImport import;
            import.AppFolder = folder.Path() / "app";
            if (name[0] == 'n')
                import.NavDat = file;
            else if (name[1] == 'p')
                import.AptDat = file;
            else
                import.Airspaces = {file};
            const Result<WorldImportCounts> counts = ImportWorld(import, grid);
            if (counts) {
                EXPECT_TRUE(FileExists(import.AppFolder / "atc_settings.tcs"));
                continue;
            }
            EXPECT_EQ(counts.error().What, FullName(file)) << counts.error().Why;
            EXPECT_FALSE(counts.error().Why.empty());
            EXPECT_FALSE(fs::exists(import.AppFolder)) << name << ' ' << number;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(World, DamagedFile,
                         testing::Values(Damage{"Cut", Cut}, Damage{"Flipped", Flip}, Damage{"LinesGone", RemoveLines},
                                         Damage{"LinesMixed", ShuffleLines}, Damage{"OtherLetters", SpoilLetters},
                                         Damage{"Utf16", MakeUtf16}, Damage{"OldLineEnds", OldMacLineEnds}),
                         [](const auto& row) { return std::string(row.param.Name); });
} // namespace
} // namespace corvane
