#pragma once

#include <string>

namespace corvane {
/// The phrase book as Markdown: everything that pilots understand, made of the table that they read by.
std::string PhraseBook();
} // namespace corvane
