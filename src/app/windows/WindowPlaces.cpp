#include "app/windows/WindowPlaces.h"

#include "core/windows/DeskSettings.h"

#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace corvane {
static constexpr QSize Frame(12, 40); ///< of a window, which is not known before it is shown

void PlaceRadar(QWidget& radar, QWidget& chat)
{
    const QRect screen = radar.screen()->availableGeometry();
    radar.resize(radar.size().boundedTo(screen.size() - QSize(0, Frame.height())));
    QRect place = radar.geometry();
    place.moveCenter(screen.center());
    const int besides = chat.width() + Frame.width();
    if (place.width() + Frame.width() + besides <= screen.width()) {
        place.moveLeft(std::min(place.left(), screen.right() - besides - place.width()));
        chat.move(place.right() + Frame.width(), place.bottom() - chat.height());
    } else {
        chat.move(place.bottomRight() - QPoint(chat.width(), chat.height()));
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

void PlaceInCorner(const DeskSettings& desk, const char* key, const QWidget& radar, QWidget& window, Qt::Corner corner)
{
    constexpr int BelowTheMenus = 50;
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
    constexpr int BelowTheMenus = 50;
    window.adjustSize();
    QRect place(QPoint(radar.x() + (radar.width() - window.width()) / 2, radar.y() + BelowTheMenus),
                window.size() + Frame);
    if (chat.isVisible() && place.intersects(chat.frameGeometry()))
        place.moveRight(std::max(chat.x() - Frame.width(), radar.x() + place.width()));
    window.move(place.topLeft());
}
} // namespace corvane
