#include "traffic/feeds/BaseStationText.h"

#include "core/NumberText.h"
#include "core/Rounding.h"
#include "core/Text.h"

#include <array>

namespace corvane {
namespace {
/// Where a field stands in a line, from 0.
enum class Field : std::uint8_t {
    Record = 0,
    Address = 4,
    Callsign = 10, // of STA: the status
    Altitude = 11,
    GroundSpeed = 12,
    Track = 13,
    Latitude = 14,
    Longitude = 15,
    Squawk = 17,
    Emergency = 19,
    OnGround = 21,
};

/// A line cut at its commas; a field that the line does not have is empty.
class Fields {
public:
    explicit Fields(std::string_view line) noexcept
    {
        for (std::size_t i = 0; i < m_fields.size(); ++i) {
            const std::size_t comma = line.find(',');
            m_fields[i] = line.substr(0, comma);
            if (comma == std::string_view::npos)
                return;
            line.remove_prefix(comma + 1);
        }
    }
    std::string_view operator[](Field field) const noexcept { return m_fields[static_cast<std::size_t>(field)]; }

private:
    std::array<std::string_view, 22> m_fields;
};
} // namespace

static std::string_view WithoutLineEnd(std::string_view line) noexcept
{
    while (line.ends_with('\n') || line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

/// -1 is the custom for yes, 1 that of some.
static std::optional<bool> FlagOf(std::string_view text) noexcept
{
    text = TrimSpaces(text);
    if (text == "-1" || text == "1")
        return true;
    return text == "0" ? std::optional(false) : std::nullopt;
}

std::optional<FeedReport> DecodeBaseStationLine(std::string_view line)
{
    const Fields fields(WithoutLineEnd(line));
    const std::string_view record = fields[Field::Record];
    const bool transmission = record == "MSG" || record == "MLAT";
    const auto address = ParseFeedAddress(TrimSpaces(fields[Field::Address]));
    if (!address || (!transmission && record != "STA"))
        return std::nullopt;
    FeedReport report{.Address = *address};
    if (!transmission) {
        const std::string_view status = TrimSpaces(fields[Field::Callsign]);
        report.Ended = status == "RM" || status == "AD";
        return report.Ended ? std::optional(std::move(report)) : std::nullopt;
    }
    report.Callsign = FeedText(fields[Field::Callsign], LongestFeedCallsign);
    report.Position = FeedPosition(FeedNumber(fields[Field::Latitude]), FeedNumber(fields[Field::Longitude]));
    report.AltitudeFt = FeedAltitude(FeedNumber(fields[Field::Altitude]));
    report.GroundSpeedKt = FeedSpeed(FeedNumber(fields[Field::GroundSpeed]));
    report.TrackDeg = FeedTrack(FeedNumber(fields[Field::Track]));
    report.Squawk = FeedSquawk(fields[Field::Squawk]);
    report.Emergency = FlagOf(fields[Field::Emergency]);
    report.OnGround = FlagOf(fields[Field::OnGround]);
    return report;
}

static void AppendSquawk(std::string& text, std::uint16_t squawk)
{
    for (const int place : {1000, 100, 10, 1})
        text += static_cast<char>('0' + squawk / place % 10);
}

static std::string FlagText(std::optional<bool> flag)
{
    if (!flag)
        return {};
    return *flag ? "-1" : "0";
}

std::string EncodeBaseStationLine(const FeedReport& report, std::string_view time)
{
    std::string line = "MSG,3,1,1," + FeedAddressText(report.Address) + ",1,";
    line.append(time).append(",").append(time).append(",").append(report.Callsign) += ',';
    if (report.AltitudeFt)
        AppendNumber(line, *report.AltitudeFt);
    line += ',';
    if (report.GroundSpeedKt)
        AppendNumber(line, RoundTo<std::int32_t>(*report.GroundSpeedKt));
    line += ',';
    if (report.TrackDeg)
        AppendNumber(line, RoundTo<std::int32_t>(*report.TrackDeg) % 360);
    line += ',';
    if (report.Position)
        AppendNumber(line, RoundToFivePlaces(report.Position->Lat));
    line += ',';
    if (report.Position)
        AppendNumber(line, RoundToFivePlaces(report.Position->Lon));
    line += ",,"; // the vertical rate, which nobody has told us
    if (report.Squawk)
        AppendSquawk(line, *report.Squawk);
    line += ",," + FlagText(report.Emergency) + ",," + FlagText(report.OnGround) + "\r\n";
    return line;
}
} // namespace corvane
