#include "debrief/windows/DebriefPicture.h"

#include "core/Rounding.h"
#include "radar/RasterSurface.h"
#include "radar/paint/QtRaster.h"

#include <QPainter>

#include <utility>

namespace corvane {
DebriefPicture::DebriefPicture(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::TabFocus); // for those who have its name read to them
}

void DebriefPicture::Show(Drawing drawing)
{
    m_drawing = std::move(drawing);
    m_drawnSize = {};
    update();
}

void DebriefPicture::Draw()
{
    m_drawnSize = size();
    m_drawnDensity = devicePixelRatioF();
    m_image.Resize(RoundTo<std::int32_t>(width() * m_drawnDensity), RoundTo<std::int32_t>(height() * m_drawnDensity));
    if (!m_drawing)
        return;
    const ScopeFont font = MakeScopeFont(ScopeQFont(m_drawnDensity));
    RasterSurface surface(m_image, font, m_drawnDensity);
    m_drawing(surface, {width(), height()});
}

void DebriefPicture::paintEvent(QPaintEvent* /*event*/)
{
    if (m_drawnSize != size() || m_drawnDensity != devicePixelRatioF())
        Draw();
    QPainter painter(this);
    QImage picture = BorrowAsQImage(m_image);
    picture.setDevicePixelRatio(m_drawnDensity);
    painter.drawImage(QPoint(0, 0), picture);
}
} // namespace corvane
