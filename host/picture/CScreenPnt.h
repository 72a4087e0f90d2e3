#ifndef HOST_PICTURE_CSCREENPNT_H
#define HOST_PICTURE_CSCREENPNT_H

#include <host/output/ByteFromShare.h>
#include <zor4data/CCldCadPnt.h>

namespace zorcld
{

/// A point on the picture: pixels from the upper left corner, depth in pixels too.
struct CScreenPnt
{
    float x;
    float y;
    float fDepth;
    unsigned char r;
    unsigned char g;
    unsigned char b;

    /// Takes the point's colour, 0 to 1 a channel.
    void SetColor(const CCldCadPnt& pnt)
    {
        r = static_cast<unsigned char>(ByteFromShare(pnt.m_fR));
        g = static_cast<unsigned char>(ByteFromShare(pnt.m_fG));
        b = static_cast<unsigned char>(ByteFromShare(pnt.m_fB));
    }
};

} // namespace zorcld

#endif
