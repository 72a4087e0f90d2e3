#ifndef EXAMPLES_CVERTEXBUFFER_H
#define EXAMPLES_CVERTEXBUFFER_H

#include <zor3geom/PNT_3D.h>
#include <zor4data/CCldCadPnt.h>
#include <zor4data/IPntCldListener.h>

#include <cstddef>
#include <cstdint>

// [buffer]
/// A vertex as the graphics card takes it: 16 bytes.
struct CVertex
{
    float x; // from the eye: near it, where precision is seen, floats have plenty
    float y;
    float z;
    std::uint8_t r;
    std::uint8_t g;
    std::uint8_t b;
    std::uint8_t a;
};

/// Thrown when the buffer has no room left: the query ends, and the cloud is as it was.
struct CBufferFull
{
};

/// Writes the points of queries straight into memory of the host's, mapped by its graphics library say.
class CVertexBuffer final : public IPntCldListener
{
public:
    CVertexBuffer(CVertex* pVertices, std::size_t nCapacity) : m_pVertices(pVertices), m_nCapacity(nCapacity)
    {
    }

    void Begin(const zor::geom::PNT_3D& eye)
    {
        m_eye = eye;
        m_nSize = 0;
    }

    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        for (int i = 0; i < nNumPnts; ++i)
        {
            if (m_nSize == m_nCapacity)
                throw CBufferFull();
            const CCldCadPnt& pnt = pPnts[i];
            m_pVertices[m_nSize++] = {static_cast<float>(pnt.m_pnt.x - m_eye.x), // the difference in double
                                      static_cast<float>(pnt.m_pnt.y - m_eye.y),
                                      static_cast<float>(pnt.m_pnt.z - m_eye.z),
                                      ToByte(pnt.m_fR),
                                      ToByte(pnt.m_fG),
                                      ToByte(pnt.m_fB),
                                      255};
        }
    }

    std::size_t GetSize() const { return m_nSize; }
    std::size_t GetCapacity() const { return m_nCapacity; }

private:
    static std::uint8_t ToByte(float f) { return static_cast<std::uint8_t>(f * 255.0F + 0.5F); }

    CVertex* m_pVertices;
    std::size_t m_nCapacity;
    std::size_t m_nSize = 0;
    zor::geom::PNT_3D m_eye;
};
// [/buffer]

#endif
