#include "cli/Commands.h"
#include "cli/JsonMembers.h"
#include "cli/RecordJson.h"
#include "core/NumberText.h"
#include "core/Text.h"
#include "session/MessageCodec.h"

#include <array>
#include <istream>
#include <ostream>

namespace corvane {
static std::string HexWord(std::int32_t word)
{
    constexpr std::string_view Digits = "0123456789abcdef";
    std::string text = "0x";
    for (int shift = 28; shift >= 0; shift -= 4)
        text += Digits[static_cast<std::uint32_t>(word) >> static_cast<unsigned>(shift) & 0xFU];
    return text;
}

static Json TypeJson(MessageType type)
{
    return std::string(MessageTypeName(type));
}

namespace {
struct MessageToJson {
    Json operator()(const PlainMessage& message) const { return {{"type", TypeJson(message.Type)}}; }
    Json operator()(const AnnounceMessage& message) const
    {
        return {{"type", TypeJson(message.Type)}, {"PlayerId", message.PlayerId}};
    }
    Json operator()(const AircraftInfoMessage& message) const
    {
        return {{"type", TypeJson(MessageType::AircraftInfo)},
                {"AircraftType", TextJson(message.AircraftType)},
                {"AircraftTitle", TextJson(message.AircraftTitle)}};
    }
    Json operator()(const PositionMessage& message) const
    {
        return {{"type", TypeJson(message.Type)},     {"Latitude", message.Latitude},
                {"Longitude", message.Longitude},     {"AltitudeFt", message.AltitudeFt},
                {"TrueHeading", message.TrueHeading}, {"GroundSpeedKt", message.GroundSpeedKt}};
    }
    Json operator()(const ChatTextMessage& message) const
    {
        return {{"type", TypeJson(MessageType::ChatText)}, {"Text", TextJson(message.Text)}};
    }
    Json operator()(const UnknownMessage& message) const
    {
        return {{"type", HexWord(message.Type)}, {"length", message.Length}};
    }
};
} // namespace

static Result<Message> MessageFromJson(const Json& object, const std::string& where)
{
    if (!object.is_object() || !object.contains("type") || !object["type"].is_string())
        return Fail(where, "is not an object with a type");
    const std::optional<MessageType> type = MessageTypeFromName(object["type"].get_ref<const std::string&>());
    if (!type)
        return Fail(where, "no message is called " + object["type"].get<std::string>());
    JsonMembers members(object);
    Message message = PlainMessage{*type};
    switch (*type) {
    case MessageType::PilotAnnounce:
    case MessageType::ObserverAnnounce: {
        AnnounceMessage announce{*type};
        members.Take("PlayerId", announce.PlayerId);
        message = announce;
        break;
    }
    case MessageType::AircraftInfo: {
        AircraftInfoMessage aircraft;
        members.Take("AircraftType", aircraft.AircraftType);
        members.Take("AircraftTitle", aircraft.AircraftTitle);
        message = std::move(aircraft);
        break;
    }
    case MessageType::PositionFull:
    case MessageType::PositionShort: {
        PositionMessage position{*type};
        members.Take("Latitude", position.Latitude);
        members.Take("Longitude", position.Longitude);
        members.Take("AltitudeFt", position.AltitudeFt);
        members.Take("TrueHeading", position.TrueHeading);
        members.Take("GroundSpeedKt", position.GroundSpeedKt);
        message = position;
        break;
    }
    case MessageType::ChatText: {
        ChatTextMessage chat;
        members.Take("Text", chat.Text);
        message = std::move(chat);
        break;
    }
    default: break; // the others carry nothing but their type
    }
    if (!members.Why().empty())
        return Fail(where, members.Why());
    return message;
}

/// The value of a hexadecimal digit, or -1.
static int DigitValue(char digit)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    const char lower = static_cast<char>(digit | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/// The bytes of a line of hexadecimal digits; blanks between bytes are allowed.
static Result<Bytes> BytesFromHex(std::string_view line, const std::string& where)
{
    constexpr std::string_view Blanks = " \t\r";
    Bytes bytes;
    for (std::size_t i = 0; i < line.size(); i += 2) {
        while (i < line.size() && Blanks.find(line[i]) != std::string_view::npos)
            ++i;
        if (i == line.size())
            break;
        const int high = DigitValue(line[i]);
        const int low = i + 1 < line.size() ? DigitValue(line[i + 1]) : -1;
        if (high < 0 || low < 0)
            return Fail(where, "is not hexadecimal bytes at character " + NumberText(std::int64_t(i + 1)));
        bytes.push_back(static_cast<std::uint8_t>(high * 16 + low));
    }
    return bytes;
}

static std::string HexFromBytes(ByteSpan bytes)
{
    constexpr std::string_view Digits = "0123456789abcdef";
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const std::uint8_t byte : bytes) {
        text += Digits[byte >> 4U];
        text += Digits[byte & 0xFU];
    }
    return text;
}

static Result<void> DecodeLines(const Console& console)
{
    std::string line;
    for (std::int64_t number = 1; std::getline(console.In, line); ++number) {
        const Result<Bytes> bytes = BytesFromHex(line, "line " + NumberText(number));
        if (!bytes)
            return bytes.error();
        const Result<Message> message = DecodeMessage(*bytes);
        const Json json = message ? std::visit(MessageToJson(), *message) : Json{{"error", message.error().Text()}};
        console.Out << ToLine(json) << '\n';
    }
    return {};
}

static Result<void> EncodeLines(const Console& console)
{
    std::string line;
    for (std::int64_t number = 1; std::getline(console.In, line); ++number) {
        if (line.find_first_not_of(" \t\r") == std::string::npos)
            continue;
        const Result<Message> message =
            MessageFromJson(Json::parse(line, nullptr, false), "line " + NumberText(number));
        if (!message)
            return message.error();
        console.Out << HexFromBytes(EncodeMessage(*message)) << '\n';
    }
    return {};
}

void AddMessageCommand(CLI::App& app, const Console& console, CommandWork& work)
{
    CLI::App* const message = app.add_subcommand("message", "Decodes and encodes the members' messages");
    message->require_subcommand(1);
    message->add_subcommand("decode", "Reads lines of hexadecimal bytes, a message each, and prints objects")
        ->callback([&console, &work] { work = [&console] { return DecodeLines(console); }; });
    message->add_subcommand("encode", "Reads objects, a line each, and prints lines of hexadecimal bytes")
        ->callback([&console, &work] { work = [&console] { return EncodeLines(console); }; });
}
} // namespace corvane
