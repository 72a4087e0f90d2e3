#ifndef HOST_PICTURE_CPICTURE_H
#define HOST_PICTURE_CPICTURE_H

#include <host/picture/CPen.h>
#include <host/picture/CPntRaster.h>

#include <cairo.h>

#include <memory>

namespace zorcld
{

class COutFile;

/// A picture of points over a background, to be drawn upon: DrawOverlay, DrawAxes, DrawPaths.
class CPicture
{
public:
    /// Averages `nScale` × `nScale` raster pixels into one over the background.
    CPicture(const CPntRaster& raster, int nScale, const CBackground& background = CBackground());

    int GetWidth() const { return m_nWidth; }
    int GetHeight() const { return m_nHeight; }

    /// A pen for this picture, labels of the size that suits it. It must not outlive the picture.
    CPen MakePen();

    /// Writes the picture, not yet committed.
    /// @throws CFailure
    void WritePng(COutFile& out) const;

private:
    struct CDestroy
    {
        void operator()(cairo_surface_t* pSurface) const { cairo_surface_destroy(pSurface); }
    };

    int m_nWidth;
    int m_nHeight;
    CBackground m_background;
    std::unique_ptr<cairo_surface_t, CDestroy> m_pSurface;
};

} // namespace zorcld

#endif
