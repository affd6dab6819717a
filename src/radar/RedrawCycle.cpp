#include "radar/RedrawCycle.h"

#include "core/Rounding.h"
#include "radar/ColourSchemes.h"
#include "radar/MapLayers.h"

namespace corvane {
void RedrawCycle::DrawMap(const MapScene& scene, ColourScheme colours)
{
    const auto width = RoundTo<std::int32_t>(scene.View.ScopeWidthPx * m_scale);
    const auto height = RoundTo<std::int32_t>(scene.View.ScopeHeightPx * m_scale);
    if (m_picture.Width() != width || m_picture.Height() != height)
        m_picture.Resize(width, height);
    else
        m_picture.Fill(PixelImage::Black);
    m_surface.RestoreDefaults();
    if (colours == ColourScheme::Classic) {
        DrawMapLayers(m_surface, scene);
    } else {
        ColouredSurface coloured(m_surface, colours);
        DrawMapLayers(coloured, scene);
        m_surface.RestoreDefaults();
    }
    m_map = m_picture;
}
} // namespace corvane
