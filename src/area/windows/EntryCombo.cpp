#include "area/windows/EntryCombo.h"

#include "area/EntryMatch.h"
#include "core/windows/QtText.h"

#include <QAbstractListModel>
#include <QComboBox>
#include <QCompleter>
#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
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

/// Keeps keys and wheel among the entries that match what is being typed: by itself the box would go from there to the
/// list's first entry.
class EntryKeys final : public QObject {
public:
    static constexpr const char* Name = "EntryKeys";

    explicit EntryKeys(QComboBox& combo) : QObject(&combo), m_combo(combo)
    {
        setObjectName(Name);
        combo.installEventFilter(this);
    }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (!Moves(*event) || !IsTyped())
            return false;
        if (m_combo.completer()->completionCount() > 0)
            m_combo.completer()->complete();
        return true;
    }

private:
    static bool Moves(const QEvent& event)
    {
        if (event.type() == QEvent::Wheel)
            return true;
        if (event.type() != QEvent::KeyPress)
            return false;
        const int key = static_cast<const QKeyEvent&>(event).key();
        return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
    }
    [[nodiscard]] bool IsTyped() const
    {
        const QString text = m_combo.currentText();
        return !text.isEmpty() && (m_combo.currentIndex() < 0 || m_combo.itemText(m_combo.currentIndex()) != text);
    }

    QComboBox& m_combo;
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
        if (combo.findChild<QObject*>(EntryKeys::Name) == nullptr)
            new EntryKeys(combo); // the combo box's
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

void TakeTypedEntry(QComboBox& combo, const std::vector<std::string>& entries, QLabel& noMatch,
                    std::function<void()> done)
{
    QObject::connect(combo.lineEdit(), &QLineEdit::textChanged, &noMatch, [&](const QString& text) {
        noMatch.setVisible(MatchEntries(entries, ToText(text)).Count == 0 && !text.isEmpty());
    });
    QObject::connect(combo.lineEdit(), &QLineEdit::returnPressed, &combo, [&combo, &entries, done = std::move(done)] {
        const QAbstractItemView* const offered = combo.completer()->popup();
        if (offered->isVisible() && offered->currentIndex().isValid())
            return; // that one is taken
        if (PickedEntry(combo, entries))
            done();
        else if (const auto meant = MatchEntries(entries, ToText(combo.currentText())).Meant)
            combo.setCurrentIndex(static_cast<int>(*meant));
    });
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
