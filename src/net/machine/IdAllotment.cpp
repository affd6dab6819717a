#include "net/machine/IdAllotment.h"

#include <algorithm>

namespace corvane::directplay {
IdAllotment::IdAllotment(std::uint32_t key, const std::vector<WireId>& inUse) : m_key(key)
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

std::optional<WireId> IdAllotment::Next(const std::vector<WireId>& inUse)
{
    constexpr std::uint32_t Indices = 0x10000;
    std::vector<bool> used(std::min<std::size_t>(inUse.size() + 1, Indices)); // one of so many is free
    for (const WireId id : inUse) {
        if (const std::uint32_t index = (id ^ m_key) & (Indices - 1); index < used.size())
            used[index] = true;
    }
    const auto free = std::ranges::find(used, false);
    if (free == used.end())
        return std::nullopt;
    const auto index = static_cast<std::uint32_t>(free - used.begin());
    while (true) {
        const WireId id = ((m_counter << 16) | index) ^ m_key;
        m_counter = (m_counter + 1) % m_modulus;
        if (!IsReserved(id))
            return id;
    }
}
} // namespace corvane::directplay
