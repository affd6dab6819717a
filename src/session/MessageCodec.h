#pragma once

#include "core/Bytes.h"
#include "core/Result.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace corvane {
/// The messages that the simulator's members send one another inside a session. Every message starts with a header of
/// two signed 32-bit numbers, its type and the number of payload bytes; all numbers are little-endian, texts are
/// Windows-1252. Layout: docs/formats.md.
enum class MessageType : std::int32_t {
    JoinRequest = 0x1001,
    ObserverJoinRequest = 0x1002,
    PilotAnnounce = 0x1003,
    ObserverAnnounce = 0x1004,
    JoinRefused = 0x1005,
    ObserverJoinRefused = 0x1006,
    IdentifyRequest = 0x1007,
    JoinRetry = 0x1008,
    AircraftInfo = 0x100E,
    AircraftInfoRequest = 0x100F,
    HostLeft = 0x1012,
    RemovedByHost = 0x1016,
    PositionShort = 0x1018,
    PositionFull = 0x1019,
    ChatText = 0x1023,
};

/// The type's own name, such as "PilotAnnounce"; empty for a type that is not in the list.
std::string_view MessageTypeName(MessageType type) noexcept;
std::optional<MessageType> MessageTypeFromName(std::string_view name) noexcept;

struct MessageHeader {
    MessageType Type{}; ///< may be a value outside the list
    std::int32_t Length = 0;
};

/// A message without a payload, or one whose payload nobody reads (HostLeft, RemovedByHost).
struct PlainMessage {
    MessageType Type{};
    bool operator==(const PlainMessage&) const = default;
};

/// PilotAnnounce or ObserverAnnounce: speaks of a player, not necessarily of its sender.
struct AnnounceMessage {
    MessageType Type{};
    std::int32_t PlayerId = 0;
    bool operator==(const AnnounceMessage&) const = default;
};

struct AircraftInfoMessage {
    std::string AircraftType; ///< "Piston Plane", "Jet Plane", "-None-", "Helicopter", or empty for any other engine
    std::string AircraftTitle;
    bool operator==(const AircraftInfoMessage&) const = default;
};

/// PositionFull, or PositionShort, which carries no speed and reads as 0 knots.
struct PositionMessage {
    MessageType Type{};
    double Latitude = 0;  ///< degrees, north positive
    double Longitude = 0; ///< degrees, east positive
    std::int32_t AltitudeFt = 0;
    std::int16_t TrueHeading = 0; ///< 0 .. 360
    std::int16_t GroundSpeedKt = 0;
    bool operator==(const PositionMessage&) const = default;
};

struct ChatTextMessage {
    std::string Text;
    bool operator==(const ChatTextMessage&) const = default;
};

/// A message of another type, known by its header alone.
struct UnknownMessage {
    std::int32_t Type = 0;
    std::int32_t Length = 0;
    bool operator==(const UnknownMessage&) const = default;
};

using Message =
    std::variant<PlainMessage, AnnounceMessage, AircraftInfoMessage, PositionMessage, ChatTextMessage, UnknownMessage>;

/// Reads a whole message. Fields are read one after another, whatever length the header declares; only texts depend on
/// it. A message that ends inside its fields is an Error whose What is the message's name ("message" before the type
/// is known). Bytes behind the fields are ignored.
Result<Message> DecodeMessage(ByteSpan message);

/// The parts of DecodeMessage, for a reader that decides by the type whether it wants the payload. Each takes the whole
/// message, whose header must have been read and be of a fitting type.
Result<MessageHeader> DecodeHeader(ByteSpan message);
Result<AnnounceMessage> DecodeAnnounce(const MessageHeader& header, ByteSpan message);
Result<AircraftInfoMessage> DecodeAircraftInfo(const MessageHeader& header, ByteSpan message);
Result<PositionMessage> DecodePosition(const MessageHeader& header, ByteSpan message);
/// The text is empty where the header declares one byte or less.
Result<ChatTextMessage> DecodeChatText(const MessageHeader& header, ByteSpan message);

/// The bytes of a message, header included. Positions are encoded so that the receiver's conversions give the same
/// heading, and the nearest altitude, speed and position that the message can carry. A ChatText of n characters
/// declares a length of 2n and carries 3n bytes, as receivers have always got it from this program. An UnknownMessage
/// becomes its header alone.
Bytes EncodeMessage(const Message& message);
} // namespace corvane
