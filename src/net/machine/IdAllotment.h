#pragma once

#include "net/wire/Protocol.h"

#include <optional>
#include <vector>

namespace corvane::directplay {
/// Hands out the ids of a session's players and groups: ((u << 16) | i) XOR key, where i is the lowest index that no
/// id in use has, and u goes up with every id, so that an id is not used again.
class IdAllotment {
public:
    IdAllotment() = default;
    /// For a new session. With bit 31 of the key clear every id is positive as a signed number.
    explicit IdAllotment(std::uint32_t key) noexcept : m_key(key), m_modulus(0x8000) {}
    /// For a session taken over with the given ids in use.
    IdAllotment(std::uint32_t key, const std::vector<WireId>& inUse);

    /// Nothing when every index is taken.
    std::optional<WireId> Next(const std::vector<WireId>& inUse);

private:
    std::uint32_t m_key = 0;
    std::uint32_t m_modulus = 0x10000;
    std::uint32_t m_counter = 0;
};
} // namespace corvane::directplay
