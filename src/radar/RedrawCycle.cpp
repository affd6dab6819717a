#include "radar/RedrawCycle.h"

#include "core/Rounding.h"
#include "radar/ColourSchemes.h"
#include "radar/MapLayers.h"

namespace corvane {
void RedrawCycle::DrawMap(const MapScene& scene, ColourScheme colours)
{
    const PixelImage& picture = m_scope.Image();
    const auto width = RoundTo<std::int32_t>(scene.View.ScopeWidthPx * m_scale);
    const auto height = RoundTo<std::int32_t>(scene.View.ScopeHeightPx * m_scale);
    if (picture.Width() != width || picture.Height() != height)
        m_scope.Resize(width, height);
    m_scope.SetPicture(nullptr);
    m_surface.RestoreDefaults();
    if (colours == ColourScheme::Classic) {
        DrawMapLayers(m_surface, scene);
    } else {
        ColouredSurface coloured(m_surface, colours);
        DrawMapLayers(coloured, scene);
        m_surface.RestoreDefaults();
    }
    m_map = m_scope.Image();
}
} // namespace corvane
