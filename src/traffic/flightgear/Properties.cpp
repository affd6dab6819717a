#include "traffic/flightgear/Properties.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace corvane::flightgear {
namespace {
enum class PropertyType : std::uint8_t { Unknown, Number, Text };

struct IdRange {
    std::int32_t First;
    std::int32_t Last;
};

constexpr std::int32_t SquawkId = 1500;
constexpr std::int32_t IdentId = 1502;
constexpr std::int32_t ChatId = 10002;
constexpr std::int32_t FrequencyId = 13001;

constexpr std::array<IdRange, 23> KnownIds{{
    {10, 10},       {100, 112},     {200, 241},     {300, 392},     {800, 801},     {810, 831},
    {900, 935},     {1001, 1006},   {1100, 1101},   {1200, 1201},   {1300, 1300},   {1400, 1400},
    {1500, 1505},   {10001, 10002}, {10100, 10119}, {10200, 10239}, {10300, 10319}, {10500, 10579},
    {11000, 11110}, {11990, 11990}, {12000, 12029}, {12200, 12229}, {13000, 13002},
}};
constexpr std::array<IdRange, 8> TextIds{
    {{108, 108}, {905, 905}, {1101, 1101}, {1200, 1200}, {1400, 1400}, {10001, 10002}, {10100, 10119}, {12000, 12029}}};
} // namespace

template <std::size_t Count> static bool IsAmong(const std::array<IdRange, Count>& ranges, std::int32_t id) noexcept
{
    return std::any_of(ranges.begin(), ranges.end(),
                       [id](const IdRange& range) { return id >= range.First && id <= range.Last; });
}

static PropertyType TypeOf(std::int32_t id) noexcept
{
    if (id <= 0 || !IsAmong(KnownIds, id))
        return PropertyType::Unknown;
    return IsAmong(TextIds, id) ? PropertyType::Text : PropertyType::Number;
}

static void Keep(Properties& properties, std::int32_t id, std::int32_t value)
{
    if (id == SquawkId)
        properties.Squawk = value;
    else if (id == IdentId)
        properties.Ident = value;
    else if (id == FrequencyId)
        properties.Frequency = value;
}

/// A text of the long form: every character takes four bytes, of which the last one counts, and their number is filled
/// up to a multiple of four.
static bool ReadLongText(XdrReader& reader, std::int32_t id, Properties& properties)
{
    constexpr std::size_t BytesPerCharacter = 4;
    const std::uint32_t length = reader.ReadU32();
    if (reader.Failed() || length > reader.Left() / BytesPerCharacter)
        return false;
    const ByteSpan characters = reader.ReadBytes(length * BytesPerCharacter);
    if (id == ChatId) {
        std::string& chat = properties.Chat.emplace();
        for (std::size_t i = BytesPerCharacter - 1; i < characters.size(); i += BytesPerCharacter)
            chat.push_back(static_cast<char>(characters[i]));
    }
    const std::size_t padding = (4 - length % 4) % 4 * BytesPerCharacter;
    static_cast<void>(reader.ReadBytes(std::min(padding, reader.Left())));
    return true;
}

static bool ReadLong(XdrReader& reader, std::uint32_t head, Properties& properties)
{
    const auto id = static_cast<std::int32_t>(head);
    switch (TypeOf(id)) {
    case PropertyType::Text: return ReadLongText(reader, id, properties);
    case PropertyType::Number: {
        const std::int32_t value = reader.ReadI32();
        if (!reader.Failed())
            Keep(properties, id, value);
        return !reader.Failed();
    }
    case PropertyType::Unknown: break;
    }
    return false;
}

/// A property whose id and value, or the length of its text, share one word.
static bool ReadShort(XdrReader& reader, std::uint32_t head, Properties& properties)
{
    const auto id = static_cast<std::int16_t>(head >> 16);
    const auto value = static_cast<std::int16_t>(head);
    switch (TypeOf(id)) {
    case PropertyType::Number: Keep(properties, id, value); return true;
    case PropertyType::Text: {
        if (value < 0)
            return false;
        const ByteSpan text = reader.ReadBytes(static_cast<std::size_t>(value));
        if (!reader.Failed() && id == ChatId)
            properties.Chat.emplace(reinterpret_cast<const char*>(text.data()), text.size());
        return !reader.Failed();
    }
    case PropertyType::Unknown: break;
    }
    return false;
}

Properties ReadProperties(XdrReader& reader, std::uint32_t encoding)
{
    constexpr std::size_t WordSize = 4;
    Properties properties;
    if (encoding != LongProperties && encoding != MixedProperties)
        return properties;
    while (reader.Left() >= WordSize) {
        const std::uint32_t head = reader.ReadU32();
        const bool isShort = encoding == MixedProperties && head >> 16 != 0;
        if (isShort ? !ReadShort(reader, head, properties) : !ReadLong(reader, head, properties))
            break;
    }
    return properties;
}
} // namespace corvane::flightgear
