#include "radar/ScopePainter.h"

#include "radar/MapLayers.h"

namespace corvane {
void ScopePainter::DrawMap(const MapScene& scene)
{
    const PixelImage& picture = m_scope.Image();
    if (picture.Width() != scene.View.ScopeWidthPx || picture.Height() != scene.View.ScopeHeightPx)
        m_scope.Resize(scene.View.ScopeWidthPx, scene.View.ScopeHeightPx);
    m_scope.SetPicture(nullptr);
    m_surface.RestoreDefaults();
    DrawMapLayers(m_surface, scene);
    m_map = m_scope.Image();
}
} // namespace corvane
