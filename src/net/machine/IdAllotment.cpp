#include "net/machine/IdAllotment.h"

#include <algorithm>

namespace corvane::directplay {
IdAllotment::IdAllotment(std::uint32_t key, const std::set<WireId>& inUse) : m_key(key)
{
    for (const WireId id : inUse)
        m_counter = std::max(m_counter, ((id ^ key) >> 16) + 1);
    m_counter %= m_modulus;
}

static bool IsReserved(WireId id)
{
    // The signature as an id would make player messages read as management messages.
    return id == EveryPlayer || id == ServerPlayer || id == UnknownPlayer || id == Signature;
}

std::optional<WireId> IdAllotment::Next(const std::set<WireId>& inUse)
{
    std::set<std::uint32_t> indices;
    for (const WireId id : inUse)
        indices.insert((id ^ m_key) & 0xFFFF);
    std::uint32_t index = 0;
    for (auto used = indices.begin(); used != indices.end() && *used == index; ++used)
        ++index;
    if (index > 0xFFFF)
        return std::nullopt;
    while (true) {
        const WireId id = ((m_counter << 16) | index) ^ m_key;
        m_counter = (m_counter + 1) % m_modulus;
        if (!IsReserved(id))
            return id;
    }
}
} // namespace corvane::directplay
