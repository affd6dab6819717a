#pragma once

#include "radar/DisplayOptions.h"
#include "radar/MapScene.h"
#include "radar/PixelImage.h"
#include "radar/RasterSurface.h"

#include <cassert>

namespace corvane {
/// The scope's pictures and the cycle in which they are drawn: the map once for a view, then again and again the map's
/// snapshot with whatever moves on top. A full redraw is DrawMap and the targets; a refresh is RestoreMap, the
/// highlight and the targets.
class RedrawCycle {
public:
    /// The font is borrowed.
    explicit RedrawCycle(const ScopeFont& font) noexcept : m_surface(m_picture, font) {}
    /// Pixels of the picture to one of the scope, 1 or more; the next DrawMap follows it.
    void SetScale(double scale) noexcept
    {
        m_scale = scale;
        m_surface.SetScale(scale);
    }
    /// Lines and points so many times as wide as they are; the next DrawMap follows it.
    void SetLineWidth(double width) noexcept { m_surface.SetLineWidth(width); }
    RedrawCycle(const RedrawCycle&) = delete; // the surface draws on this object's own picture
    RedrawCycle& operator=(const RedrawCycle&) = delete;

    /// Clears the scope to the size of the scene's view times the scale, draws the map layers and takes their snapshot.
    void DrawMap(const MapScene& scene, ColourScheme colours = ColourScheme::Classic);
    /// Takes everything off the scope but the map.
    void RestoreMap()
    {
        assert(m_map.Width() == m_picture.Width() && m_map.Height() == m_picture.Height());
        m_picture = m_map;
    }

    /// What is drawn over the map goes here.
    [[nodiscard]] Surface& Scope() noexcept { return m_surface; }
    [[nodiscard]] const PixelImage& Picture() const noexcept { return m_picture; }

private:
    PixelImage m_picture; ///< what is shown
    PixelImage m_map;     ///< the snapshot: map layers without targets
    RasterSurface m_surface;
    double m_scale = 1;
};
} // namespace corvane
