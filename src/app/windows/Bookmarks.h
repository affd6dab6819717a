#pragma once

#include <QList>
#include <QObject>
#include <QString>

class QAction;
class QMenu;

namespace corvane {
class DeskSettings;
class RadarDisplay;
struct AreaModel;

/// Nine views of each area that the user keeps and recalls, by keys and from a menu, which this fills.
class Bookmarks final : public QObject {
    Q_OBJECT

public:
    static constexpr int Count = 9;

    /// freeKeys  the recalling keys from this one on are free: a recording that plays has the first ones
    Bookmarks(DeskSettings& desk, const AreaModel& area, RadarDisplay& display, QMenu& menu, int freeKeys);

signals:
    /// The view is another one.
    void Recalled();

private:
    void Describe();
    void Keep(int number);
    void Recall(int number);
    [[nodiscard]] QString Key(int number, const char* what) const;

    DeskSettings& m_desk;
    const AreaModel& m_area;
    RadarDisplay& m_display;
    QList<QAction*> m_recalls;
};
} // namespace corvane
