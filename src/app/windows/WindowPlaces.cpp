#include "app/windows/WindowPlaces.h"

#include "core/windows/DeskSettings.h"

#include <QEvent>
#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace corvane {
static constexpr QSize Frame(12, 40); ///< of a window, which is not known before it is shown
static constexpr int BelowTheMenus = 50;

void PlaceRadar(QWidget& radar, QWidget& chat)
{
    const QRect screen = radar.screen()->availableGeometry();
    radar.resize(radar.size().boundedTo(screen.size() - Frame));
    QRect place(QPoint(), radar.size() + Frame);
    place.moveCenter(screen.center());
    const QSize besides = chat.size() + Frame;
    if (place.width() + besides.width() <= screen.width()) {
        place.moveLeft(std::min(place.left(), screen.right() - besides.width() - place.width()));
        chat.move(place.right(), place.bottom() - besides.height());
    } else {
        chat.move(place.right() - besides.width(), place.bottom() - besides.height());
    }
    radar.move(place.topLeft());
}

static constexpr const char* RadarPlace = "places/radar";
static constexpr const char* ChatPlace = "places/chat";
static constexpr const char* ChatHidden = "chat/hidden";

bool RestorePlaces(const DeskSettings& desk, QWidget& radar, QWidget& chat)
{
    static_cast<void>(desk.RestorePlace(RadarPlace, radar));
    static_cast<void>(desk.RestorePlace(ChatPlace, chat));
    return desk.Flag(ChatHidden, false);
}

void KeepPlaces(DeskSettings& desk, const QWidget& radar, const QWidget& chat)
{
    desk.KeepPlace(RadarPlace, radar);
    desk.KeepPlace(ChatPlace, chat);
    desk.Keep(ChatHidden, !chat.isVisible());
}

namespace {
/// Remembers where a window stood when it was closed, or went with its radar.
class PlaceKeeper final : public QObject {
public:
    PlaceKeeper(DeskSettings& desk, const char* key, QWidget& window)
        : QObject(&window), m_desk(desk), m_key(key), m_window(window)
    {
        window.installEventFilter(this);
    }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::Hide && !event->spontaneous())
            m_desk.KeepPlace(m_key, m_window);
        return false;
    }

private:
    DeskSettings& m_desk;
    const char* m_key;
    const QWidget& m_window;
};
} // namespace

void PlaceInCorner(DeskSettings& desk, const char* key, const QWidget& radar, QWidget& window, Qt::Corner corner)
{
    new PlaceKeeper(desk, key, window); // the window's
    if (desk.RestorePlace(key, window))
        return;
    QRect place(QPoint(), window.size() + Frame);
    const QRect inside = radar.geometry().adjusted(0, BelowTheMenus, 0, 0);
    if (corner == Qt::TopRightCorner)
        place.moveTopRight(inside.topRight());
    else
        place.moveBottomLeft(inside.bottomLeft());
    window.move(place.topLeft());
}

void PlaceOver(const QWidget& radar, const QWidget& chat, QWidget& window)
{
    window.adjustSize();
    QRect place(QPoint(radar.x() + (radar.width() - window.width()) / 2, radar.y() + BelowTheMenus),
                window.size() + Frame);
    if (chat.isVisible() && place.intersects(chat.frameGeometry()))
        place.moveRight(std::max(chat.x() - Frame.width(), radar.x() + place.width()));
    window.move(place.topLeft());
}
} // namespace corvane
