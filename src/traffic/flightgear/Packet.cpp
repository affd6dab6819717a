#include "traffic/flightgear/Packet.h"

#include "traffic/flightgear/Geocentric.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <cmath>

namespace corvane::flightgear {
static constexpr std::uint32_t Magic = 0x46474653; // "FGFS"
static constexpr std::uint32_t Version = 0x00010001;
static constexpr std::uint32_t PositionKind = 7;
static constexpr std::size_t CallsignSize = 8;
static constexpr std::size_t ModelSize = 96;
static constexpr std::size_t SmallestPosition = 232; // no properties
static constexpr double MetresPerNm = 1852;
static constexpr double SecondsPerHour = 3600;

// The simulator turns degrees into radians by a constant of single precision, which is 8e-9 too small: its places lie
// up to 0.15 m from where it shows them, and are put back here.
static constexpr double SimulatorsDegree = static_cast<double>(static_cast<float>(RadiansPerDegree)) / RadiansPerDegree;

static LatLon FromSimulators(LatLon position) noexcept
{
    return {std::clamp(position.Lat / SimulatorsDegree, -90.0, 90.0),
            std::clamp(position.Lon / SimulatorsDegree, -180.0, 180.0)};
}

/// The text in a field of a fixed size that zeros fill up.
static std::string_view FieldText(ByteSpan field) noexcept
{
    const auto end = std::find(field.begin(), field.end(), std::uint8_t{0});
    return {reinterpret_cast<const char*>(field.data()), static_cast<std::size_t>(end - field.begin())};
}

static Vector3 ReadVector(XdrReader& reader) noexcept
{
    Vector3 vector;
    vector.X = static_cast<double>(reader.ReadF32());
    vector.Y = static_cast<double>(reader.ReadF32());
    vector.Z = static_cast<double>(reader.ReadF32());
    return vector;
}

static bool IsFinite(const Vector3& vector) noexcept
{
    return std::isfinite(vector.X) && std::isfinite(vector.Y) && std::isfinite(vector.Z);
}

/// Heading and speed over ground of an attitude and a velocity along the aircraft's axes.
static void SetMovement(PositionPacket& packet, const Vector3& attitude, const Vector3& velocity) noexcept
{
    const LocalFrame frame = LocalFrameAt(packet.Position);
    const Vector3 nose = Rotated({1, 0, 0}, attitude);
    const double heading = std::atan2(Dot(frame.East, nose), Dot(frame.North, nose)) * DegreesPerRadian;
    packet.TrueHeading = heading < 0 ? heading + 360 : heading;
    const Vector3 moving = Rotated(velocity, attitude);
    packet.GroundSpeedKt = std::hypot(Dot(frame.North, moving), Dot(frame.East, moving)) * SecondsPerHour / MetresPerNm;
}

/// Whether an aircraft can be there at that speed: what is huge overflows later.
static bool IsPlausible(const PositionPacket& packet) noexcept
{
    constexpr double LowestFt = -6000; // simulators let aircraft sink below the sea
    constexpr double HighestFt = 200000;
    constexpr double FastestKt = 4000;
    return packet.AltitudeFt >= LowestFt && packet.AltitudeFt <= HighestFt && packet.GroundSpeedKt <= FastestKt;
}

/// The fixed part behind the header. Nothing where a number is none.
static bool ReadFixedPart(XdrReader& reader, PositionPacket& packet)
{
    packet.Model = FieldText(reader.ReadBytes(ModelSize));
    packet.TimeS = reader.ReadF64();
    const double lag = reader.ReadF64();
    Vector3 place;
    place.X = reader.ReadF64();
    place.Y = reader.ReadF64();
    place.Z = reader.ReadF64();
    const Vector3 attitude = ReadVector(reader);
    const Vector3 velocity = ReadVector(reader);
    const Vector3 turning = ReadVector(reader);
    constexpr std::size_t Accelerations = 24;
    static_cast<void>(reader.ReadBytes(Accelerations));
    const bool finite = std::isfinite(packet.TimeS) && std::isfinite(lag) && IsFinite(place) && IsFinite(attitude) &&
                        IsFinite(velocity) && IsFinite(turning);
    if (reader.Failed() || !finite)
        return false;
    const GeodeticPlace geodetic = GeodeticFromGeocentric(place);
    packet.Position = FromSimulators(geodetic.Position);
    packet.AltitudeFt = geodetic.HeightFt;
    SetMovement(packet, attitude, velocity);
    return IsPlausible(packet);
}

std::optional<PositionPacket> DecodePosition(ByteSpan datagram)
{
    if (datagram.size() < SmallestPosition || datagram.size() > LargestPacket)
        return std::nullopt;
    XdrReader reader(datagram);
    const bool isPosition = reader.ReadU32() == Magic && reader.ReadU32() == Version &&
                            reader.ReadU32() == PositionKind && reader.ReadU32() == datagram.size();
    if (!isPosition)
        return std::nullopt;
    constexpr std::size_t ForTheServer = 8; // range and port, which servers overwrite
    static_cast<void>(reader.ReadBytes(ForTheServer));
    PositionPacket packet;
    packet.Callsign = FieldText(reader.ReadBytes(CallsignSize).first(CallsignLength));
    if (packet.Callsign.empty() || !ReadFixedPart(reader, packet))
        return std::nullopt;
    const std::uint32_t encoding = reader.ReadU32();
    packet.Told = ReadProperties(reader, encoding);
    return packet;
}

namespace {
/// Appends big-endian fields.
class XdrWriter {
public:
    explicit XdrWriter(Bytes& out) noexcept : m_out(out) {}

    void WriteU32(std::uint32_t value) { Write(value, 4); }
    void WriteF32(double value) { Write(std::bit_cast<std::uint32_t>(static_cast<float>(value)), 4); }
    void WriteF64(double value) { Write(std::bit_cast<std::uint64_t>(value), 8); }
    void WriteVector(const Vector3& vector)
    {
        for (const double value : {vector.X, vector.Y, vector.Z})
            WriteF32(value);
    }
    /// A text in a field of size bytes, which keeps a zero behind it.
    void WriteField(std::string_view text, std::size_t size)
    {
        text = text.substr(0, size - 1);
        WriteText(text);
        m_out.insert(m_out.end(), size - text.size(), std::uint8_t{0});
    }
    void WriteText(std::string_view text) { m_out.insert(m_out.end(), text.begin(), text.end()); }
    void WriteShort(std::uint32_t id, std::int32_t value)
    {
        WriteU32(id << 16 | (static_cast<std::uint32_t>(value) & 0xFFFF));
    }

private:
    void Write(std::uint64_t value, int size)
    {
        for (int shift = 8 * (size - 1); shift >= 0; shift -= 8)
            m_out.push_back(static_cast<std::uint8_t>(value >> shift));
    }

    Bytes& m_out;
};
} // namespace

static void WriteProperties(XdrWriter& writer, const OwnPosition& own)
{
    constexpr std::uint32_t EncodingId = 10;
    constexpr std::uint32_t SquawkId = 1500;
    constexpr std::uint32_t ChatId = 10002;
    writer.WriteU32(MixedProperties);
    writer.WriteShort(EncodingId, 2);
    if (own.Squawk)
        writer.WriteShort(SquawkId, *own.Squawk);
    if (own.Chat.empty()) { // said all the same, or receivers show what somebody else has said
        writer.WriteU32(ChatId);
        writer.WriteU32(0);
        return;
    }
    writer.WriteShort(ChatId, static_cast<std::int32_t>(own.Chat.size()));
    writer.WriteText(own.Chat);
}

Bytes EncodePosition(const OwnPosition& own)
{
    constexpr std::size_t LengthAt = 12;
    [[maybe_unused]] constexpr std::size_t LongestChat = 767; // only said to the assertion
    assert(own.Callsign.size() <= CallsignLength && own.Model.size() < ModelSize && own.Chat.size() <= LongestChat);
    Bytes packet;
    XdrWriter writer(packet);
    for (const std::uint32_t value : {Magic, Version, PositionKind, 0U, std::uint32_t{own.RangeNm}, 0U})
        writer.WriteU32(value);
    writer.WriteField(own.Callsign, CallsignSize);
    writer.WriteField(own.Model, ModelSize);
    writer.WriteF64(own.TimeS);
    writer.WriteF64(own.IntervalS);
    const LatLon sent{own.Position.Lat * SimulatorsDegree, own.Position.Lon * SimulatorsDegree};
    const Vector3 place = GeocentricFromGeodetic({sent, own.AltitudeFt});
    for (const double metres : {place.X, place.Y, place.Z})
        writer.WriteF64(metres);
    writer.WriteVector(LevelAttitude(own.Position, own.TrueHeading));
    writer.WriteVector({own.GroundSpeedKt * MetresPerNm / SecondsPerHour, 0, 0});
    for (int i = 0; i < 3; ++i) // turn rates, accelerations
        writer.WriteVector({});
    WriteProperties(writer, own);
    for (std::size_t i = 0; i < 4; ++i)
        packet[LengthAt + i] = static_cast<std::uint8_t>(packet.size() >> (8 * (3 - i)));
    return packet;
}
} // namespace corvane::flightgear
