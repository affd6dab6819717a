#include "radar/windows/FindWindow.h"

#include "core/windows/QtText.h"
#include "ui_FindWindow.h"

#include <QKeyEvent>
#include <QShortcut>

#include <algorithm>

namespace corvane {
FindWindow::FindWindow(const AreaModel& area, const PlayerTable& players)
    : m_ui(std::make_unique<Ui::FindForm>()), m_search(area), m_players(players)
{
    m_ui->setupUi(this);
    m_ui->Part->installEventFilter(this);
    connect(m_ui->Part, &QLineEdit::textChanged, this, &FindWindow::ShowFound);
    connect(m_ui->Part, &QLineEdit::returnPressed, this, &FindWindow::Pick);
    connect(m_ui->Results, &QListWidget::itemActivated, this, &FindWindow::Pick);
    connect(m_ui->Results, &QListWidget::itemClicked, this, &FindWindow::Pick);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
}

FindWindow::~FindWindow() = default;

void FindWindow::StartAgain()
{
    m_ui->Part->setFocus();
    m_ui->Part->selectAll();
}

/// Up and Down move in the list while the keyboard stays in the field.
bool FindWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        const int step = key == Qt::Key_Down ? 1 : key == Qt::Key_Up ? -1 : 0;
        const int count = m_ui->Results->count();
        if (step != 0 && count > 0) {
            m_ui->Results->setCurrentRow(std::clamp(m_ui->Results->currentRow() + step, 0, count - 1));
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void FindWindow::ShowFound()
{
    const QString part = m_ui->Part->text();
    m_found = m_search.Find(ToText(part), m_players.Players());
    m_ui->Results->clear();
    for (const FoundPlace& found : m_found)
        m_ui->Results->addItem(ToQString(found.Label));
    m_ui->Results->setCurrentRow(m_found.empty() ? -1 : 0);
    m_ui->Status->setText(m_found.empty() && !part.isEmpty()    ? tr("Nothing here has that in its name or code.")
                          : m_found.size() == AreaSearch::Limit ? tr("More than these fit; type on.")
                                                                : tr("Return centres the radar on it."));
}

void FindWindow::Pick()
{
    const int row = m_ui->Results->currentRow();
    if (row >= 0 && static_cast<std::size_t>(row) < m_found.size())
        emit Picked(m_found[static_cast<std::size_t>(row)]);
}
} // namespace corvane
