#include "area/windows/EntryCombo.h"

#include "core/windows/QtText.h"

#include <QAbstractListModel>
#include <QComboBox>
#include <QCompleter>
#include <QLineEdit>
#include <QListView>

#include <algorithm>

namespace corvane {
namespace {
/// Entries as a list model, each turned into a text when it is looked at: 25,000 at once would hold everything up.
class EntryModel final : public QAbstractListModel {
public:
    EntryModel(const std::vector<std::string>& entries, QObject* parent)
        : QAbstractListModel(parent), m_entries(entries)
    {
    }
    [[nodiscard]] int rowCount(const QModelIndex& parent) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override
    {
        const auto row = static_cast<std::size_t>(index.row());
        if (!index.isValid() || row >= m_entries.size() || (role != Qt::DisplayRole && role != Qt::EditRole))
            return {};
        return ToQString(m_entries[row]);
    }

private:
    const std::vector<std::string>& m_entries;
};
} // namespace

void ShowPlaceholder(QComboBox& combo)
{
    combo.lineEdit()->setPlaceholderText(combo.placeholderText());
}

void SetEntries(QComboBox& combo, const std::vector<std::string>& entries)
{
    auto* const model = new EntryModel(entries, &combo);
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
        // By itself Qt picks what was typed when the field is left: the first entry that differs in letter case alone.
        QObject::disconnect(combo.lineEdit(), &QLineEdit::editingFinished, &combo, nullptr);
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
