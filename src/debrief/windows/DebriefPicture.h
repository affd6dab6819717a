#pragma once

#include "debrief/TracksPicture.h"
#include "radar/PixelImage.h"

#include <QWidget>

#include <functional>

namespace corvane {
/// A picture by the scope's code, as large as the widget and as sharp as the screen.
class DebriefPicture final : public QWidget {
    Q_OBJECT

public:
    using Drawing = std::function<void(Surface& surface, PictureSize size)>;

    explicit DebriefPicture(QWidget* parent = nullptr);

    void Show(Drawing drawing);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void Draw();

    Drawing m_drawing;
    PixelImage m_image;
    QSize m_drawnSize; ///< of the widget when the image was drawn; invalid: it is to be drawn
    double m_drawnDensity = 0;
};
} // namespace corvane
