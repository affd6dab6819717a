#include "app/windows/Bookmarks.h"

#include "area/AreaModel.h"
#include "core/windows/DeskSettings.h"
#include "core/windows/QtText.h"
#include "radar/RadarDisplay.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <QUrl>

namespace corvane {
Bookmarks::Bookmarks(DeskSettings& desk, const AreaModel& area, RadarDisplay& display, QMenu& menu, int freeKeys)
    : m_desk(desk), m_area(area), m_display(display)
{
    for (int number = 1; number <= Count; ++number) {
        QAction* const recall = menu.addAction({}, this, [this, number] { Recall(number); });
        m_recalls.push_back(recall);
        recall->setObjectName(QStringLiteral("recall%1").arg(number));
        if (number >= freeKeys)
            recall->setShortcut(QKeySequence(QStringLiteral("Ctrl+%1").arg(number)));
    }
    menu.addSeparator();
    for (int number = 1; number <= Count; ++number) {
        QAction* const keep = menu.addAction(tr("Keep as view %1").arg(number), this, [this, number] { Keep(number); });
        keep->setObjectName(QStringLiteral("keep%1").arg(number));
        keep->setShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+%1").arg(number)));
    }
    Describe();
    connect(&menu, &QMenu::aboutToShow, this, &Bookmarks::Describe);
}

/// Says in the menu which views are kept.
void Bookmarks::Describe()
{
    for (int number = 1; number <= Count; ++number) {
        const double zoom = m_desk.Number(Key(number, "zoom"), 0);
        const QString kept = zoom < 1 ? tr("none is kept") : tr("x%1").arg(zoom);
        m_recalls[number - 1]->setText(tr("Go to view &%1 (%2)").arg(number).arg(kept));
    }
}

/// The settings' key of a part of a view; areas have names that no key may have.
QString Bookmarks::Key(int number, const char* what) const
{
    const QString area = QString::fromLatin1(QUrl::toPercentEncoding(ToQString(m_area.AreaName)));
    return QStringLiteral("bookmarks/%1/%2/%3").arg(area).arg(number).arg(QLatin1String(what));
}

void Bookmarks::Keep(int number)
{
    m_desk.Keep(Key(number, "lat"), m_display.View().ViewCenter.Lat);
    m_desk.Keep(Key(number, "lon"), m_display.View().ViewCenter.Lon);
    m_desk.Keep(Key(number, "zoom"), m_display.View().ZoomLevel);
}

void Bookmarks::Recall(int number)
{
    const double zoom = m_desk.Number(Key(number, "zoom"), 0);
    if (zoom < 1) // none is kept
        return;
    m_display.Show({m_desk.Number(Key(number, "lat"), 0), m_desk.Number(Key(number, "lon"), 0)}, zoom);
    emit Recalled();
}
} // namespace corvane
