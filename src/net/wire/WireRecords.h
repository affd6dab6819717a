#pragma once

#include "net/wire/Guid.h"
#include "net/wire/Protocol.h"
#include "net/wire/SocketAddress.h"

#include <optional>
#include <string>
#include <vector>

/// Records that several messages of the protocol carry.
namespace corvane::directplay {
/// The session description. Name and password travel beside it; what is left out here is written as zero.
struct SessionDescription {
    std::uint32_t Flags = 0;
    Guid Instance;
    Guid Application;
    std::uint32_t MaxPlayers = 0;
    std::uint32_t CurrentPlayers = 0;
    std::uint32_t IdKey = 0; ///< every id of the session is XORed with it
    std::array<std::uint32_t, 4> ApplicationDefined{};

    bool operator==(const SessionDescription&) const = default;
};

/// Where a machine can be reached. Ip 0 means the address of whoever sent the record.
struct ServiceData {
    SocketAddress Stream;
    SocketAddress Datagram;

    bool operator==(const ServiceData&) const = default;
};

/// A player or group in full form.
struct PackedPlayer {
    std::uint32_t Flags = 0;
    WireId Id = 0;
    std::u16string ShortName;
    std::u16string LongName;
    std::optional<ServiceData> Service;
    Bytes Data;
    WireId SystemId = 0; ///< system player of the machine that owns it
    std::uint32_t Version = OwnVersion;
    WireId Parent = 0;
    std::vector<WireId> Members; ///< of a group

    bool operator==(const PackedPlayer&) const = default;
};

/// A player or group in the form of the name table that a joiner receives: absent fields take no bytes.
struct SuperPackedPlayer {
    std::uint32_t Flags = 0;
    WireId Id = 0;
    std::uint32_t VersionOrSystemId = 0; ///< a system player's version, or the system player of the owning machine
    std::u16string ShortName;
    std::u16string LongName;
    Bytes Data;
    std::optional<ServiceData> Service;
    std::vector<WireId> Members;
    WireId Parent = 0;

    bool operator==(const SuperPackedPlayer&) const = default;
};

void WriteDescription(ByteWriter& out, const SessionDescription& description);
/// Nothing when its size field is not 80 or bytes are missing.
std::optional<SessionDescription> ReadDescription(ByteReader& in);

void WriteServiceData(ByteWriter& out, const ServiceData& service);
/// Nothing when the bytes are not the 32 of this provider.
std::optional<ServiceData> ReadServiceData(ByteSpan bytes);

std::size_t PackedPlayerSize(const PackedPlayer& player) noexcept;
void WritePackedPlayer(ByteWriter& out, const PackedPlayer& player);
std::optional<PackedPlayer> ReadPackedPlayer(ByteReader& in);

void WriteSuperPackedPlayer(ByteWriter& out, const SuperPackedPlayer& player);
std::optional<SuperPackedPlayer> ReadSuperPackedPlayer(ByteReader& in);
} // namespace corvane::directplay
