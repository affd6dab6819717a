#pragma once

#include "recording/RecordedMembers.h"

#include <cstdint>
#include <span>
#include <vector>

namespace corvane {
/// The index of the first record at a time or later; their number where there is none.
std::size_t FirstAt(std::span<const RecordView> records, std::int64_t timeMs) noexcept;

/// Passes over the records before a time: the members become those who are there then. Returns the indices, in order,
/// of the messages that still hold then: all chat, and the last of every other kind from each member that has not left
/// since. The work is that of sorting the records, whatever is in them.
std::vector<std::size_t> PassOver(std::span<const RecordView> records, std::int64_t timeMs, RecordedMembers& members);
} // namespace corvane
