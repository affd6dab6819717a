#pragma once

#include "net/wire/Protocol.h"

#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace corvane::directplay {
/// The names of players that have left the session: messages of theirs may still wait to be read. The oldest are
/// forgotten first, and a machine whose players come and go makes only its own names be forgotten.
class DepartedPlayers {
public:
    static constexpr std::size_t MostOfMachine = 256;
    static constexpr std::size_t MostMachines = 256;

    explicit DepartedPlayers(std::size_t mostOfMachine = MostOfMachine) noexcept : m_mostOfMachine(mostOfMachine) {}

    /// Returns the ids that had to be forgotten for this one.
    std::vector<WireId> Add(WireId player, WireId machine, std::u16string name);
    [[nodiscard]] bool Contains(WireId player) const { return m_names.contains(player); }
    [[nodiscard]] std::optional<std::u16string> NameOf(WireId player) const;

private:
    std::size_t m_mostOfMachine;
    std::map<WireId, std::u16string> m_names;
    std::map<WireId, std::deque<WireId>> m_ofMachine; ///< in order of leaving
    std::deque<WireId> m_machines;                    ///< in order of the first that left
};
} // namespace corvane::directplay
