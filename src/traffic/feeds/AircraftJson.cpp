#include "traffic/feeds/AircraftJson.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <functional>
#include <utility>

namespace corvane {
namespace {
using Json = nlohmann::json;

/// What the members of one aircraft hold, before it is known which of them there are.
struct Members {
    std::optional<FeedAddress> Address;
    FeedReport Report;
    bool TextGround = false;
    std::optional<double> Latitude, Longitude, Barometric, OlderAltitude, Geometric, Speed, OlderSpeed, Track, Heading,
        Seen, SeenPosition;
};

struct NumberMember {
    std::string_view Name;
    std::optional<double> Members::*Value;
};
constexpr std::array NumberMembers{
    NumberMember{"lat", &Members::Latitude},          NumberMember{"lon", &Members::Longitude},
    NumberMember{"alt_baro", &Members::Barometric},   NumberMember{"altitude", &Members::OlderAltitude},
    NumberMember{"alt_geom", &Members::Geometric},    NumberMember{"gs", &Members::Speed},
    NumberMember{"speed", &Members::OlderSpeed},      NumberMember{"track", &Members::Track},
    NumberMember{"true_heading", &Members::Heading},  NumberMember{"seen", &Members::Seen},
    NumberMember{"seen_pos", &Members::SeenPosition},
};

/// Takes the file apart while it is parsed: nothing is kept of it but what aircraft need.
class Reader final : public nlohmann::json_sax<Json> {
public:
    bool null() override { return true; }
    bool boolean(bool /*value*/) override { return true; }
    bool number_integer(number_integer_t value) override { return Number(static_cast<double>(value)); }
    bool number_unsigned(number_unsigned_t value) override { return Number(static_cast<double>(value)); }
    bool number_float(number_float_t value, const string_t& /*text*/) override { return Number(value); }
    bool string(string_t& value) override
    {
        if (m_depth == EntryDepth && m_inAircraft)
            TakeText(value);
        return true;
    }
    bool binary(binary_t& /*value*/) override { return true; }
    bool start_object(std::size_t /*elements*/) override
    {
        if (!Deeper())
            return false;
        if (m_depth == EntryDepth && m_inAircraft)
            m_members = {};
        return true;
    }
    bool key(string_t& name) override
    {
        m_key = std::move(name);
        return true;
    }
    bool end_object() override
    {
        if (m_depth == EntryDepth && m_inAircraft)
            FinishAircraft();
        --m_depth;
        return true;
    }
    bool start_array(std::size_t /*elements*/) override
    {
        if (m_depth == 1 && m_key == "aircraft")
            m_inAircraft = FoundAircraft = true;
        return Deeper();
    }
    bool end_array() override
    {
        if (--m_depth == 1)
            m_inAircraft = false;
        return true;
    }
    bool parse_error(std::size_t position, const std::string& /*token*/, const Json::exception& error) override
    {
        constexpr int NumberOverflow = 406;
        Why = "is no JSON at byte " + std::to_string(position);
        HugeNumber = error.id == NumberOverflow;
        return false;
    }

    AircraftJson File;
    std::string Why;
    bool FoundAircraft = false;
    bool HugeNumber = false;

private:
    static constexpr int EntryDepth = 3; // {"aircraft": [{

    bool Deeper()
    {
        if (++m_depth <= AircraftJson::DeepestNesting)
            return true;
        Why = "nests deeper than " + std::to_string(AircraftJson::DeepestNesting) + " levels";
        return false;
    }

    bool Number(double value)
    {
        if (m_depth == 1 && m_key == "now")
            File.NowS = value;
        if (m_depth != EntryDepth || !m_inAircraft)
            return true;
        const auto* const member = std::ranges::find(NumberMembers, m_key, &NumberMember::Name);
        if (member != NumberMembers.end())
            m_members.*(member->Value) = value;
        return true;
    }

    void TakeText(const std::string& value)
    {
        constexpr std::size_t LongestWord = 8;
        if (m_key == "hex")
            m_members.Address = ParseFeedAddress(value);
        else if (m_key == "flight")
            m_members.Report.Callsign = FeedText(value, LongestFeedCallsign);
        else if (m_key == "squawk")
            m_members.Report.Squawk = FeedSquawk(value);
        else if (m_key == "category")
            m_members.Report.Category = FeedText(value, LongestWord);
        else if (m_key == "t")
            m_members.Report.TypeName = FeedText(value, LongestWord);
        else if (m_key == "emergency")
            m_members.Report.Emergency = value != "none";
        else if (m_key == "alt_baro" || m_key == "altitude")
            m_members.TextGround = value == "ground";
    }

    void FinishAircraft()
    {
        if (!m_members.Address || File.Aircraft.size() >= AircraftJson::MostAircraft)
            return;
        const auto first = [](auto one, auto other) { return one ? one : other; };
        const auto age = [](std::optional<double> seconds) { return std::max(seconds.value_or(0), 0.0); };
        AircraftJsonEntry entry{std::move(m_members.Report), age(m_members.Seen),
                                age(first(m_members.SeenPosition, m_members.Seen))};
        FeedReport& report = entry.Report;
        report.Address = *m_members.Address;
        report.Position = FeedPosition(m_members.Latitude, m_members.Longitude);
        const auto pressure = first(FeedAltitude(m_members.Barometric), FeedAltitude(m_members.OlderAltitude));
        report.AltitudeFt = first(pressure, FeedAltitude(m_members.Geometric));
        report.GroundSpeedKt = first(FeedSpeed(m_members.Speed), FeedSpeed(m_members.OlderSpeed));
        report.TrackDeg = first(FeedTrack(m_members.Track), FeedTrack(m_members.Heading));
        if (m_members.TextGround || pressure)
            report.OnGround = m_members.TextGround;
        if (m_members.TextGround)
            report.AltitudeFt.reset(); // the one above the ellipsoid is no altitude to show on the ground
        File.Aircraft.push_back(std::move(entry));
    }

    int m_depth = 0;
    bool m_inAircraft = false;
    std::string m_key;
    Members m_members;
};
} // namespace

/// Puts null in the place of numbers that are too large for any computer, at which the parser would stop.
static void ReplaceHugeNumbers(std::string& text)
{
    constexpr std::string_view NumberCharacters = "+-.0123456789eE";
    bool inString = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '"' || (inString && text[at] == '\\')) {
            text[at] == '"' ? inString = !inString : ++at; // what is escaped does not end the string
            continue;
        }
        if (inString || NumberCharacters.find(text[at]) == std::string_view::npos)
            continue;
        const std::size_t end = std::min(text.find_first_not_of(NumberCharacters, at), text.size());
        double value = 0;
        const auto read = std::from_chars(text.data() + at, text.data() + end, value);
        constexpr std::string_view Null = "null";
        if (read.ec == std::errc::result_out_of_range && end - at >= Null.size())
            text.replace(at, end - at, std::string(Null) + std::string(end - at - Null.size(), ' '));
        at = end - 1;
    }
}

Result<AircraftJson> DecodeAircraftJson(std::string text, const std::string& name)
{
    if (text.size() > AircraftJson::LargestFile)
        return Fail(name, "has more than " + std::to_string(AircraftJson::LargestFile) + " bytes");
    const std::size_t fingerprint = std::hash<std::string_view>()(text);
    Reader reader;
    bool whole = Json::sax_parse(text, &reader);
    if (!whole && reader.HugeNumber) {
        ReplaceHugeNumbers(text);
        reader = {};
        whole = Json::sax_parse(text, &reader);
    }
    if (!whole)
        return Fail(name, reader.Why);
    if (!reader.FoundAircraft)
        return Fail(name, "has no list of aircraft");
    reader.File.Fingerprint = fingerprint;
    return std::move(reader.File);
}
} // namespace corvane
