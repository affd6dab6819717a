#include "radar/BlockText.h"

#include "core/NumberText.h"
#include "core/Rounding.h"
#include "core/Text.h"
#include "radar/PlayerTargets.h"
#include "radar/RadioText.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace corvane {
static constexpr std::string_view ArrowGap = "   ";

static std::string Shortened(std::string_view text, std::size_t longest)
{
    const std::string_view trimmed = TrimSpaces(text);
    return trimmed.size() <= longest ? std::string(trimmed) : std::string(trimmed.substr(0, longest - 2)) + "..";
}

static std::string HundredsOfFeet(std::int32_t feet)
{
    return PaddedNumber(RoundTo<std::int32_t>(feet / 100.0), 3);
}

static std::string FlightPlanLine(const PlayerRecord& target)
{
    constexpr std::size_t LongestType = 12;
    constexpr std::size_t LongestIcao = 6;
    std::string line;
    const auto add = [&line](std::string_view word) {
        if (!word.empty())
            line.append(line.empty() ? "" : " ").append(word);
    };
    add(Shortened(target.AircraftType, LongestType));
    add(Shortened(target.DestinationIcao, LongestIcao));
    if (target.CruiseAltitude > 0)
        add(HundredsOfFeet(target.CruiseAltitude));
    return line;
}

static std::string RadioLine(const MemberRadio& radio)
{
    const std::string squawk = SquawkText(radio);
    const std::string frequency = FrequencyText(radio);
    return squawk + (squawk.empty() || frequency.empty() ? "" : " ") + frequency;
}

static void AddCompactLines(BlockText& block, const PlayerRecord& target, const BlockSubject& subject)
{
    block.BeforeArrow = HundredsOfFeet(target.AltitudeFt);
    block.Trend = subject.Trend;
    std::string line = block.BeforeArrow;
    line.append(ArrowGap).append(PaddedNumber(RoundTo<std::int32_t>(target.GroundSpeedKt / 10.0), 2));
    block.Lines.push_back(std::move(line));
}

static void AddClassicLines(BlockText& block, const PlayerRecord& target)
{
    TargetLines lines;
    FormatTargetLines(target, lines);
    block.Lines = {std::move(lines.Line1), std::move(lines.Line2)};
}

BlockText WriteBlock(const PlayerRecord& target, const BlockSubject& subject, const DisplayOptions& options)
{
    constexpr std::size_t LongestCallsign = 24;
    BlockText block;
    if (subject.OnGround && options.GroundBlocks == GroundBlockContent::None)
        return block;
    if (subject.OnGround && options.GroundBlocks == GroundBlockContent::Callsign) {
        block.Lines.push_back(Shortened(target.Name, LongestCallsign));
        return block;
    }
    if (options.Blocks == BlockContent::Classic) {
        AddClassicLines(block, target);
    } else {
        block.Lines.push_back(Shortened(target.Name, LongestCallsign));
        AddCompactLines(block, target, subject);
    }
    if (options.Blocks == BlockContent::Full)
        for (const std::string& line : {FlightPlanLine(target), RadioLine(subject.Radio)})
            if (!line.empty())
                block.Lines.push_back(line);
    if (subject.LowAltitude)
        block.Lines.push_back("LOW " + HundredsOfFeet(target.AltitudeFt) + " MIN " +
                              HundredsOfFeet(target.MinimumAltitudeFt));
    return block;
}

BlockSize MeasureBlock(const BlockText& text, const Surface& surface)
{
    BlockSize size;
    for (const std::string& line : text.Lines)
        size.Width = std::max(size.Width, surface.TextWidth(line));
    size.Height = static_cast<std::int32_t>(text.Lines.size()) * surface.TextHeight();
    return size;
}

/// An arrow of one line's height, its middle at x.
static void DrawTrendArrow(Surface& surface, std::int32_t x, std::int32_t top, std::int32_t height, TrackTrend trend)
{
    constexpr std::int32_t HeadPx = 3;
    const ScopePoint upper{x, top + 2};
    const ScopePoint lower{x, top + height - 3};
    const bool climbing = trend == TrackTrend::Climbing;
    const ScopePoint tip = climbing ? upper : lower;
    const std::int32_t back = climbing ? HeadPx : -HeadPx;
    surface.Line(climbing ? lower : upper, tip);
    surface.Line(tip, Offset(tip, -HeadPx, back));
    surface.Line(tip, Offset(tip, HeadPx, back));
}

void DrawBlockText(Surface& surface, const BlockText& text, ScopePoint topLeft)
{
    const std::int32_t height = surface.TextHeight();
    ScopePoint at = topLeft;
    for (std::size_t i = 0; i < text.Lines.size(); ++i, at.Y += height) {
        surface.TextOut(at, text.Lines[i]);
        if (i != 1 || text.BeforeArrow.empty() || text.Trend == TrackTrend::Level)
            continue;
        const std::int32_t gap = surface.TextWidth(ArrowGap);
        DrawTrendArrow(surface, at.X + surface.TextWidth(text.BeforeArrow) + gap / 2, at.Y, height, text.Trend);
    }
}
} // namespace corvane
