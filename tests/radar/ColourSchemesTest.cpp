#include "radar/ColourSchemes.h"

#include "radar/Appearance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

namespace corvane {
namespace {
using Triple = std::array<double, 3>;
using Matrix = std::array<Triple, 3>;

/// sRGB as light, 0 .. 1 (IEC 61966-2-1).
Triple LightOf(Color color)
{
    const auto linear = [](std::uint8_t value) {
        const double part = value / 255.0;
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return {linear(color.R), linear(color.G), linear(color.B)};
}

Triple Times(const Matrix& matrix, const Triple& light)
{
    Triple product{};
    for (std::size_t row = 0; row < 3; ++row)
        product[row] = matrix[row][0] * light[0] + matrix[row][1] * light[1] + matrix[row][2] * light[2];
    return product;
}

/// Contrast against black by the Web Content Accessibility Guidelines 2.
double ContrastOf(Color color)
{
    const Triple light = LightOf(color);
    return (0.2126 * light[0] + 0.7152 * light[1] + 0.0722 * light[2] + 0.05) / 0.05;
}

/// CIE L*a*b* under D65.
Triple LabOf(const Triple& light)
{
    constexpr Matrix ToXyz{
        {{0.4124564, 0.3575761, 0.1804375}, {0.2126729, 0.7151522, 0.0721750}, {0.0193339, 0.1191920, 0.9503041}}};
    const auto root = [](double t) { return t > 216.0 / 24389 ? std::cbrt(t) : (24389.0 / 27 * t + 16) / 116; };
    const Triple xyz = Times(ToXyz, light);
    const double x = root(xyz[0] / 0.95047);
    const double y = root(xyz[1]);
    const double z = root(xyz[2] / 1.08883);
    return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

/// Delta E of 1976.
double Difference(const Triple& a, const Triple& b)
{
    return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

struct Eyes {
    const char* Name;
    Matrix Sees; ///< light as it is seen: Machado, Oliveira and Fernandes 2009, whole deficiency
};
const std::array<Eyes, 4> AllEyes{{
    {"full", {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}},
    {"protanopia",
     {{{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}}},
    {"deuteranopia",
     {{{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}}},
    {"tritanopia",
     {{{1.255528, -0.076749, -0.178779}, {-0.078411, 0.930809, 0.147602}, {0.004733, 0.691367, 0.303900}}}},
}};

Triple Seen(const Eyes& eyes, Color color)
{
    Triple light = Times(eyes.Sees, LightOf(color));
    for (double& part : light)
        part = std::clamp(part, 0.0, 1.0);
    return LabOf(light);
}

TEST(ColourMeasures, AreThoseOfTheTables)
{
    EXPECT_NEAR(ContrastOf({255, 255, 255}), 21, 1e-9);
    EXPECT_NEAR(ContrastOf({118, 118, 118}), 21 / 4.54, 0.01); // the lightest grey with 4.54 on white
    EXPECT_NEAR(LabOf(LightOf({255, 0, 0}))[0], 53.24, 0.01);
    EXPECT_NEAR(LabOf(LightOf({255, 0, 0}))[1], 80.09, 0.02);
    EXPECT_NEAR(Difference(LabOf({1, 1, 1}), LabOf({0, 0, 0})), 100, 0.01);
}

class AccessibleScheme : public testing::TestWithParam<ColourScheme> {};

TEST_P(AccessibleScheme, IsReadableOnBlack)
{
    const double least = GetParam() == ColourScheme::Contrast ? 6.3 : 4.5;
    for (const SchemeColours& row : AllSchemeColours())
        EXPECT_GE(ContrastOf(row.In(GetParam())), least) << row.What;
}

TEST_P(AccessibleScheme, IsToldApartByEverybody)
{
    const auto rows = AllSchemeColours();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            if (rows[i].What == "notes" && rows[j].What == "texts")
                continue; // both are words, and say what they are
            for (const Eyes& eyes : AllEyes)
                EXPECT_GE(Difference(Seen(eyes, rows[i].In(GetParam())), Seen(eyes, rows[j].In(GetParam()))), 20)
                    << rows[i].What << " and " << rows[j].What << ", " << eyes.Name;
        }
    }
}

std::string SchemeName(const testing::TestParamInfo<ColourScheme>& row)
{
    constexpr std::array<const char*, 4> Names = {"Classic", "Contrast", "Safe", "Dim"};
    return Names[static_cast<std::size_t>(row.param)];
}
INSTANTIATE_TEST_SUITE_P(Radar, AccessibleScheme,
                         testing::Values(ColourScheme::Contrast, ColourScheme::Safe, ColourScheme::Dim), SchemeName);

TEST(ColourSchemes, ClassicIsWhatItWasAndTheTableHoldsEveryColourOnce)
{
    const auto rows = AllSchemeColours();
    ASSERT_EQ(rows.size(), static_cast<std::size_t>(SchemeRow::Note) + 1);
    for (const SchemeColours& row : rows) {
        EXPECT_EQ(InScheme(ColourScheme::Classic, row.Classic), row.Classic);
        EXPECT_EQ(InScheme(ColourScheme::Safe, row.Classic), row.Safe) << row.What; // no other row hides it
    }
    EXPECT_EQ(ColoursOf(ColourScheme::Classic).Violation, (Color{255, 80, 64}));
    EXPECT_EQ(ColoursOf(ColourScheme::Dim).Violation, rows[static_cast<std::size_t>(SchemeRow::Violation)].Dim);
    EXPECT_EQ(InScheme(ColourScheme::Safe, {1, 2, 3}), (Color{1, 2, 3}));
}

TEST(Appearance, GivesItsColoursToADisplayThatHasNone)
{
    Appearance look;
    look.Colours = ColourScheme::Safe;
    DisplayOptions own;
    own.Colours = ColourScheme::Dim;
    EXPECT_EQ(InAppearance({}, look).Colours, ColourScheme::Safe);
    EXPECT_EQ(InAppearance(own, look).Colours, ColourScheme::Dim);
    EXPECT_EQ(InAppearance({}, {}), ClassicDisplay());
    EXPECT_EQ(LineWidths.Hold(std::nan("")), 1);
    EXPECT_EQ(LineWidths.Hold(1e300), 6);
}
} // namespace
} // namespace corvane
