#pragma once

#include "core/Bytes.h"

#include <array>
#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace corvane::directplay {
/// Sixteen bytes in the order in which they travel.
struct Guid {
    std::array<std::uint8_t, 16> Value{};

    [[nodiscard]] bool IsEmpty() const noexcept { return *this == Guid{}; }
    // NOLINTNEXTLINE(modernize-use-nullptr): the checker takes the zero that a default comparison means for a pointer
    auto operator<=>(const Guid&) const = default;
};

/// "{12345678-9ABC-DEF0-1122-334455667788}": the first three groups are little-endian numbers on the wire, the last
/// eight bytes stand in written order.
std::string GuidText(const Guid& guid);
/// Reads that form, in either letter case.
std::optional<Guid> ParseGuid(std::string_view text);

void WriteGuid(ByteWriter& out, const Guid& guid);
/// Zero when bytes are missing; the reader has failed then.
Guid ReadGuid(ByteReader& in);
} // namespace corvane::directplay
