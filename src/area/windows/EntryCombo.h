#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

class QComboBox;
class QLabel;

namespace corvane {
/// Shows an editable combo box's placeholder text while it is empty, which Qt does for the others alone.
void ShowPlaceholder(QComboBox& combo);

/// Fills an editable combo box with 8-bit entries, at once for tens of thousands, with type-ahead anywhere in the text.
/// The vector is borrowed for as long as the combo box shows it; after a change it must be set again.
void SetEntries(QComboBox& combo, const std::vector<std::string>& entries);

/// The entry picked from the list, 8-bit text. Text that was typed is a pick only where it is an entry of the list.
std::optional<std::string> PickedEntry(const QComboBox& combo, const std::vector<std::string>& entries);

/// Lets Return take what was typed for the entry that is meant by it, and then, when one is picked, call done. Says
/// below the field, in a label that is there for it, when no entry holds the text.
void TakeTypedEntry(QComboBox& combo, const std::vector<std::string>& entries, QLabel& noMatch,
                    std::function<void()> done);

/// Picks the first entry that begins with a text, as a person would from the list. Returns whether there is one.
bool PickEntryThatBegins(QComboBox& combo, const std::vector<std::string>& entries, const std::string& beginning);
} // namespace corvane
