// A refresh of 1,000 targets at 1920 x 1080, beside the same picture painted by plain QPainter calls: at most half of
// that.

#include "bench/Desktop.h"
#include "core/Geodesy.h"
#include "radar/RadarDisplay.h"
#include "radar/paint/QtRaster.h"

#include <QFontMetrics>
#include <QPainter>
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <string>

namespace corvane::bench {
namespace {
constexpr std::int32_t Width = 1920;
constexpr std::int32_t Height = 1080;

/// A thousand pilots around an airport. Their headings are multiples of 45 degrees, whose lines have the same pixels by
/// any rule.
struct Traffic {
    AreaModel Area;
    MagVarGrid Grid;
    DisplayFlags Flags;
    SessionState Session;
    PlayerTable Players;
    ScopeFont Font = MakeScopeFont(ScopeQFont());
    RadarDisplay Display{{Area, Grid, Flags, Session, Players}, Font};

    Traffic()
    {
        std::mt19937 random(2002);
        std::uniform_int_distribution<std::int32_t> x(1, Width - 1);
        std::uniform_int_distribution<std::int32_t> y(1, Height - 1);
        Display.Load(Width, Height);
        for (int i = 0; i < 1000; ++i) {
            Players.Append("N" + std::to_string(1000 + i), i + 10, PilotRole);
            PlayerRecord& pilot = Players.Players().back();
            const ScopeDegrees at = DegreesAtPixel(Display.View(), {x(random), y(random)});
            pilot.Latitude = at.Y;
            pilot.Longitude = at.X;
            pilot.MagHeading = i % 8 * 45;
            pilot.AltitudeFt = 1000 + 37 * i;
            pilot.GroundSpeedKt = static_cast<std::int16_t>(100 + i % 400);
        }
        Display.Draw(); // the map and its snapshot
    }
    void Refresh()
    {
        Display.RefreshTargets();
        Display.Draw();
    }
};

/// The same scene as a program paints it that uses QPainter as it comes.
class PlainPainting {
public:
    explicit PlainPainting(Traffic& traffic) : m_traffic(traffic), m_picture(Width, Height, QImage::Format_RGB32)
    {
        Traffic empty;
        empty.Players.Empty();
        empty.Display.RedrawAll();
        empty.Display.Draw();
        m_map = BorrowAsQImage(empty.Display.Picture()).copy();
    }

    void Refresh()
    {
        QPainter painter(&m_picture);
        painter.drawImage(0, 0, m_map);
        painter.setFont(m_font);
        painter.setPen(QColor(0, 192, 0));
        painter.setBrush(QColor(0, 192, 0));
        for (const PlayerRecord& pilot : m_traffic.Players.Players())
            DrawTarget(painter, pilot);
    }
    [[nodiscard]] const QImage& Picture() const { return m_picture; }

private:
    void DrawTarget(QPainter& painter, const PlayerRecord& pilot) const
    {
        const ScopePoint at = ProjectToScope(m_traffic.Display.View(), {pilot.Latitude, pilot.Longitude});
        const double heading = pilot.MagHeading * RadiansPerDegree;
        painter.drawEllipse(at.X - 5, at.Y - 5, 10, 10);
        painter.drawLine(at.X, at.Y, at.X + qRound(15 * std::sin(heading)), at.Y - qRound(15 * std::cos(heading)));
        painter.drawLine(at.X, at.Y, at.X + 21, at.Y - 21);
        const QFontMetrics metrics(m_font);
        const QPoint text(at.X + 21, at.Y - 21 - 2 * metrics.height() + metrics.ascent());
        painter.drawText(text, QStringLiteral("%1  Hdg: %2*  Alt: %3ft")
                                   .arg(QString::fromStdString(pilot.Name))
                                   .arg(pilot.MagHeading)
                                   .arg(pilot.AltitudeFt));
        painter.drawText(text + QPoint(0, metrics.height()),
                         QStringLiteral("GS: %1kts  Min Alt: -None-").arg(pilot.GroundSpeedKt));
    }

    Traffic& m_traffic;
    QFont m_font = ScopeQFont();
    QImage m_map;
    QImage m_picture;
};

void TargetsByPlainPainting(benchmark::State& state)
{
    const Desktop desktop;
    Traffic traffic;
    PlainPainting plain(traffic);
    plain.Refresh();
    traffic.Refresh();
    if (plain.Picture() != BorrowAsQImage(traffic.Display.Picture()))
        state.SkipWithError("the pictures are not equal");
    for (auto _ : state)
        plain.Refresh();
}
BENCHMARK(TargetsByPlainPainting)->Unit(benchmark::kMicrosecond);

/// moving: every pilot has reported another altitude since the last refresh.
void TargetRefresh(benchmark::State& state, bool moving)
{
    const Desktop desktop;
    Traffic traffic;
    for (auto _ : state) {
        if (moving)
            for (PlayerRecord& pilot : traffic.Players.Players())
                pilot.AltitudeFt ^= 1;
        traffic.Refresh();
    }
}
BENCHMARK_CAPTURE(TargetRefresh, Resting, false)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(TargetRefresh, Moving, true)->Unit(benchmark::kMicrosecond);
} // namespace
} // namespace corvane::bench
