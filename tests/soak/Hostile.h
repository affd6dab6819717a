#pragma once

#include "tests/soak/Members.h"

#include <string>

namespace corvane::soak {
/// A member that breaks the rules for as long as it lasts. To each target (a member's address; the host's session is
/// joined first) it
/// - announces 4,096 players that it was never given, with names of 400 characters,
/// - renames one of them again and again, 10 KB a second,
/// - tells every player of the session that the host has removed it, and that it was refused.
Result<nlohmann::json> Attack(const MemberOptions& options, const std::vector<std::string>& targets);

/// A stranger that answers in the host's name: the machine at an address, should it be joining, is refused an id, gets
/// one that nobody gave out, is refused the session, and gets a table of members of its own.
void AnswerForTheHost(const std::string& stranger, const std::string& address);
} // namespace corvane::soak
