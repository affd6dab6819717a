#include "session/MessageCodec.h"

#include "core/NumberText.h"
#include "session/WireUnits.h"

#include <array>

namespace corvane {
namespace {
struct NamedType {
    MessageType Type;
    std::string_view Name;
};

constexpr std::size_t HeaderSize = 8;
constexpr std::array<NamedType, 15> TypeNames = {{
    {MessageType::JoinRequest, "JoinRequest"},
    {MessageType::ObserverJoinRequest, "ObserverJoinRequest"},
    {MessageType::PilotAnnounce, "PilotAnnounce"},
    {MessageType::ObserverAnnounce, "ObserverAnnounce"},
    {MessageType::JoinRefused, "JoinRefused"},
    {MessageType::ObserverJoinRefused, "ObserverJoinRefused"},
    {MessageType::IdentifyRequest, "IdentifyRequest"},
    {MessageType::JoinRetry, "JoinRetry"},
    {MessageType::AircraftInfo, "AircraftInfo"},
    {MessageType::AircraftInfoRequest, "AircraftInfoRequest"},
    {MessageType::HostLeft, "HostLeft"},
    {MessageType::RemovedByHost, "RemovedByHost"},
    {MessageType::PositionShort, "PositionShort"},
    {MessageType::PositionFull, "PositionFull"},
    {MessageType::ChatText, "ChatText"},
}};
} // namespace

std::string_view MessageTypeName(MessageType type) noexcept
{
    for (const NamedType& named : TypeNames) {
        if (named.Type == type)
            return named.Name;
    }
    return {};
}

std::optional<MessageType> MessageTypeFromName(std::string_view name) noexcept
{
    for (const NamedType& named : TypeNames) {
        if (named.Name == name)
            return named.Type;
    }
    return std::nullopt;
}

static ByteReader PayloadReader(ByteSpan message) noexcept
{
    ByteReader reader(message);
    static_cast<void>(reader.ReadBytes(HeaderSize));
    return reader;
}

static Error EndsEarly(MessageType type, ByteSpan message, std::int64_t needed)
{
    return Fail(std::string(MessageTypeName(type)), "ends after " +
                                                        NumberText(static_cast<std::int64_t>(message.size())) + " of " +
                                                        NumberText(needed) + " bytes");
}

/// Reads count bytes as text, without the zero bytes, wherever they stand; nothing where they reach over the end.
static std::optional<std::string> ReadMessageText(ByteReader& reader, std::int64_t count)
{
    if (count <= 0)
        return std::string();
    const ByteSpan bytes = reader.ReadBytes(static_cast<std::size_t>(count));
    if (reader.Failed())
        return std::nullopt;
    std::string text;
    text.reserve(bytes.size());
    for (const std::uint8_t byte : bytes) {
        if (byte != 0)
            text += static_cast<char>(byte);
    }
    return text;
}

Result<MessageHeader> DecodeHeader(ByteSpan message)
{
    ByteReader reader(message);
    MessageHeader header;
    header.Type = static_cast<MessageType>(reader.ReadI32());
    header.Length = reader.ReadI32();
    if (reader.Failed())
        return Fail("message", "ends after " + NumberText(static_cast<std::int64_t>(message.size())) +
                                   " bytes, inside its header");
    return header;
}

Result<AnnounceMessage> DecodeAnnounce(const MessageHeader& header, ByteSpan message)
{
    ByteReader reader = PayloadReader(message);
    const AnnounceMessage announce{header.Type, reader.ReadI32()};
    if (reader.Failed())
        return EndsEarly(header.Type, message, HeaderSize + sizeof(std::int32_t));
    return announce;
}

Result<AircraftInfoMessage> DecodeAircraftInfo(const MessageHeader& header, ByteSpan message)
{
    constexpr std::int64_t EngineTypeSize = 2;
    ByteReader reader = PayloadReader(message);
    const std::int16_t engineType = reader.ReadI16();
    if (reader.Failed())
        return EndsEarly(header.Type, message, std::int64_t{HeaderSize} + EngineTypeSize);
    std::optional<std::string> title = ReadMessageText(reader, header.Length - EngineTypeSize);
    if (!title)
        return EndsEarly(header.Type, message, std::int64_t{HeaderSize} + header.Length);
    return AircraftInfoMessage{std::string(EngineTypeText(engineType)), std::move(*title)};
}

Result<PositionMessage> DecodePosition(const MessageHeader& header, ByteSpan message)
{
    constexpr std::size_t FullSize = 50;
    constexpr std::size_t ShortSize = 34;
    constexpr std::size_t FullLead = 20; // bytes before the speed
    constexpr std::size_t ShortLead = 12;
    const bool full = header.Type == MessageType::PositionFull;
    if (message.size() < HeaderSize + (full ? FullSize : ShortSize))
        return EndsEarly(header.Type, message, HeaderSize + (full ? FullSize : ShortSize));
    ByteReader reader = PayloadReader(message);
    static_cast<void>(reader.ReadBytes(full ? FullLead : ShortLead));
    PositionMessage position{.Type = header.Type};
    if (full) {
        position.GroundSpeedKt = SpeedFromWire(reader.ReadI32());
        static_cast<void>(reader.ReadI32());
    }
    position.TrueHeading = HeadingFromPbh(reader.ReadI32());
    position.Latitude = LatitudeFromWire(reader.ReadI32());
    position.Longitude = LongitudeFromWire(reader.ReadI32());
    position.AltitudeFt = AltitudeFromWire(reader.ReadI32());
    return position;
}

Result<ChatTextMessage> DecodeChatText(const MessageHeader& header, ByteSpan message)
{
    constexpr std::int64_t TerminatorSize = 1;
    ByteReader reader = PayloadReader(message);
    std::optional<std::string> text = ReadMessageText(reader, header.Length - TerminatorSize);
    if (!text)
        return EndsEarly(header.Type, message, std::int64_t{HeaderSize} + header.Length - TerminatorSize);
    return ChatTextMessage{std::move(*text)};
}

template <class T> static Result<Message> AsMessage(Result<T> decoded)
{
    if (!decoded)
        return decoded.error();
    return Message(std::move(*decoded));
}

Result<Message> DecodeMessage(ByteSpan message)
{
    const Result<MessageHeader> header = DecodeHeader(message);
    if (!header)
        return header.error();
    switch (header->Type) {
    case MessageType::PilotAnnounce:
    case MessageType::ObserverAnnounce: return AsMessage(DecodeAnnounce(*header, message));
    case MessageType::AircraftInfo: return AsMessage(DecodeAircraftInfo(*header, message));
    case MessageType::PositionShort:
    case MessageType::PositionFull: return AsMessage(DecodePosition(*header, message));
    case MessageType::ChatText: return AsMessage(DecodeChatText(*header, message));
    case MessageType::JoinRequest:
    case MessageType::ObserverJoinRequest:
    case MessageType::JoinRefused:
    case MessageType::ObserverJoinRefused:
    case MessageType::IdentifyRequest:
    case MessageType::JoinRetry:
    case MessageType::AircraftInfoRequest:
    case MessageType::HostLeft:
    case MessageType::RemovedByHost: return Message(PlainMessage{header->Type});
    }
    return Message(UnknownMessage{static_cast<std::int32_t>(header->Type), header->Length});
}

namespace {
/// Writes one message's header and payload, whichever kind it is.
class MessageWriter {
public:
    explicit MessageWriter(Bytes& out) noexcept : m_writer(out) {}

    void operator()(const PlainMessage& plain) { WriteHeader(plain.Type, 0); }

    void operator()(const AnnounceMessage& announce)
    {
        WriteHeader(announce.Type, sizeof(std::int32_t));
        m_writer.WriteI32(announce.PlayerId);
    }

    void operator()(const AircraftInfoMessage& info)
    {
        WriteHeader(MessageType::AircraftInfo, sizeof(std::int16_t) + info.AircraftTitle.size());
        m_writer.WriteI16(EngineTypeCode(info.AircraftType));
        m_writer.WriteText(info.AircraftTitle);
    }

    void operator()(const PositionMessage& position)
    {
        constexpr std::size_t TailSize = 6; // three 16-bit fields behind the altitude
        const bool full = position.Type == MessageType::PositionFull;
        WriteHeader(position.Type, full ? 50 : 34);
        m_writer.WriteZeros(full ? 20 : 12);
        if (full) {
            m_writer.WriteI32(SpeedToWire(position.GroundSpeedKt));
            m_writer.WriteI32(0);
        }
        m_writer.WriteI32(PbhFromHeading(position.TrueHeading));
        m_writer.WriteI32(LatitudeToWire(position.Latitude));
        m_writer.WriteI32(LongitudeToWire(position.Longitude));
        m_writer.WriteI32(AltitudeToWire(position.AltitudeFt));
        m_writer.WriteZeros(TailSize);
    }

    void operator()(const ChatTextMessage& chat)
    {
        WriteHeader(MessageType::ChatText, 2 * chat.Text.size());
        m_writer.WriteText(chat.Text);
        m_writer.WriteZeros(2 * chat.Text.size());
    }

    void operator()(const UnknownMessage& unknown)
    {
        m_writer.WriteI32(unknown.Type);
        m_writer.WriteI32(unknown.Length);
    }

private:
    void WriteHeader(MessageType type, std::size_t length)
    {
        m_writer.WriteI32(static_cast<std::int32_t>(type));
        m_writer.WriteU32(static_cast<std::uint32_t>(length));
    }

    ByteWriter m_writer;
};
} // namespace

Bytes EncodeMessage(const Message& message)
{
    Bytes bytes;
    bytes.reserve(64);
    std::visit(MessageWriter(bytes), message);
    return bytes;
}
} // namespace corvane
