#include "area/windows/EntryCombo.h"

#include "core/windows/QtText.h"

#include <QComboBox>
#include <QCompleter>
#include <QLineEdit>
#include <QListView>
#include <QStringListModel>

#include <algorithm>

namespace corvane {
void ShowPlaceholder(QComboBox& combo)
{
    combo.lineEdit()->setPlaceholderText(combo.placeholderText());
}

void SetEntries(QComboBox& combo, const std::vector<std::string>& entries)
{
    QStringList texts;
    texts.reserve(static_cast<qsizetype>(entries.size()));
    for (const std::string& entry : entries)
        texts.append(ToQString(entry));
    auto* const model = new QStringListModel(texts, &combo);
    auto* const list = new QListView(&combo);
    list->setUniformItemSizes(true); // measuring every entry would take seconds
    list->setLayoutMode(QListView::Batched);
    combo.setView(list);
    combo.setModel(model);
    combo.setCurrentIndex(-1);
    if (combo.isEditable()) {
        auto* const completer = new QCompleter(model, &combo);
        completer->setCaseSensitivity(Qt::CaseInsensitive);
        completer->setFilterMode(Qt::MatchContains);
        completer->setCompletionMode(QCompleter::PopupCompletion);
        combo.setCompleter(completer);
        combo.clearEditText();
        ShowPlaceholder(combo);
    }
}

std::optional<std::string> PickedEntry(const QComboBox& combo, const std::vector<std::string>& entries)
{
    const int index = combo.currentIndex();
    if (index < 0 || static_cast<std::size_t>(index) >= entries.size())
        return std::nullopt;
    const std::string& entry = entries[static_cast<std::size_t>(index)];
    if (combo.isEditable() && combo.currentText() != ToQString(entry))
        return std::nullopt; // typed over
    return entry;
}

bool PickEntryThatBegins(QComboBox& combo, const std::vector<std::string>& entries, const std::string& beginning)
{
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const std::string& entry) { return entry.starts_with(beginning); });
    if (found == entries.end())
        return false;
    combo.setCurrentIndex(static_cast<int>(found - entries.begin()));
    return true;
}
} // namespace corvane
