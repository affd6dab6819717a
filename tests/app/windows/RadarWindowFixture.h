#pragma once

#include "radar/windows/ScopeWidget.h"
#include "tests/app/windows/ProgramFixture.h"

#include <QMouseEvent>

namespace corvane {
/// The radar window over KSEA in the practice session, whose pilots neither move nor are on the scope.
class RadarWindowTest : public ProgramTest {
protected:
    static constexpr QRgb Green = qRgb(0, 192, 0);

    void SetUp() override
    {
        ProgramTest::SetUp();
        m_radar = StartInRadar();
        m_radar->resize(1000, 700); // whatever the screen
        QCoreApplication::processEvents();
        ASSERT_TRUE(WaitUntil([&] { return m_state.Players.PlayerCount() > 3; }));
        In<QTimer>(m_radar, "Timer1").stop(); // nobody moves any more
        for (PlayerRecord& player : m_state.Players.Players())
            player.Latitude = player.Longitude = 0; // and nobody is on the scope
        m_view = OpeningView(m_radar);
    }
    /// The pilots in table order, from 0 on.
    PlayerRecord& Pilot(std::size_t number)
    {
        for (PlayerRecord& player : m_state.Players.Players())
            if (player.Role == PilotRole && player.PlayerId != m_state.Session.OwnPlayerId && number-- == 0)
                return player;
        ADD_FAILURE() << "there are fewer pilots";
        return m_state.Players.Players().front();
    }
    /// Puts a pilot at a pixel of the opening view.
    void PutPilotAt(ScopePoint pixel, std::size_t number = 0)
    {
        const ScopeDegrees at = DegreesAtPixel(m_view, pixel);
        Pilot(number).Latitude = at.Y;
        Pilot(number).Longitude = at.X;
    }
    /// At once, as nothing else is let through meanwhile: neither news of the pilots nor the display's own pointer.
    void MovePointerTo(QPoint place, Qt::MouseButtons held = {})
    {
        ScopeWidget& scope = Scope(m_radar);
        QMouseEvent event(QEvent::MouseMove, place, scope.mapToGlobal(place), Qt::NoButton, held, {});
        QCoreApplication::sendEvent(&scope, &event);
    }
    /// The colour of a pixel of the widget, which has several pixels on a dense screen.
    static QRgb ColorAt(const QImage& picture, int x, int y)
    {
        return picture.pixel(qRound(x * picture.devicePixelRatio()), qRound(y * picture.devicePixelRatio()));
    }
    QRgb PixelAt(ScopePoint at) { return ColorAt(Picture(m_radar), at.X, at.Y); }
    bool ShowsIn(const QRect& part, QRgb color)
    {
        const QImage picture = Picture(m_radar);
        for (int y = part.top(); y <= part.bottom(); ++y)
            for (int x = part.left(); x <= part.right(); ++x)
                if (ColorAt(picture, x, y) == color)
                    return true;
        return false;
    }
    std::string Zoom() { return In<QLabel>(m_radar, "Label7").text().toStdString(); }
    void Press(Qt::Key key) { QTest::keyClick(m_radar->focusWidget(), key); }

    QWidget* m_radar = nullptr;
    ScopeView m_view;
};
} // namespace corvane
