#include <host/picture/CPicture.h>

#include <host/output/COutFile.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <new>

namespace zorcld
{

namespace
{

/// A pixel as the drawing library has it: its channels times its opacity.
std::uint32_t Pack(const CRgb& color, float fOpacity)
{
    const auto byte = [](float f) { return static_cast<std::uint32_t>(std::clamp(f + 0.5F, 0.0F, 255.0F)); };
    return byte(255.0F * fOpacity) << 24U | byte(color.r) << 16U | byte(color.g) << 8U | byte(color.b);
}

std::uint32_t CalcMean(const CPntRaster& raster, int x, int y, int nScale, const CBackground& background)
{
    CRgb sum;
    int nSeen = 0;
    for (int yFine = y * nScale; yFine < (y + 1) * nScale; ++yFine)
        for (int xFine = x * nScale; xFine < (x + 1) * nScale; ++xFine)
        {
            const std::size_t i = raster.GetIndex(xFine, yFine);
            if (raster.vecDepth[i] == CPntRaster::c_fEmpty)
                continue;
            const CRgb color = RgbFromBytes(raster.vecColor[i]);
            sum = {sum.r + color.r, sum.g + color.g, sum.b + color.b};
            ++nSeen;
        }
    const auto fAll = static_cast<float>(nScale * nScale);
    const auto fSeen = static_cast<float>(nSeen);
    const float fBehind = background.bClear ? 0.0F : fAll - fSeen;
    sum = {sum.r + fBehind * background.color.r, sum.g + fBehind * background.color.g,
           sum.b + fBehind * background.color.b};
    return Pack({sum.r / fAll, sum.g / fAll, sum.b / fAll}, (fSeen + fBehind) / fAll);
}

/// Takes the bytes of the PNG; no exception may pass through the library that calls it.
struct CPngSink
{
    COutFile& out;
    std::exception_ptr pError;

    static cairo_status_t Write(void* pSink, const unsigned char* pBytes, unsigned int nBytes)
    {
        auto& sink = *static_cast<CPngSink*>(pSink);
        try
        {
            sink.out.Write(pBytes, nBytes);
            return CAIRO_STATUS_SUCCESS;
        }
        catch (...)
        {
            sink.pError = std::current_exception();
            return CAIRO_STATUS_WRITE_ERROR;
        }
    }
};

} // namespace

CPicture::CPicture(const CPntRaster& raster, int nScale, const CBackground& background)
    : m_nWidth(raster.nWidth / nScale), m_nHeight(raster.nHeight / nScale), m_background(background),
      m_pSurface(cairo_image_surface_create(background.bClear ? CAIRO_FORMAT_ARGB32 : CAIRO_FORMAT_RGB24,
                                            m_nWidth, m_nHeight))
{
    if (cairo_surface_status(m_pSurface.get()) != CAIRO_STATUS_SUCCESS)
        throw std::bad_alloc();
    cairo_surface_flush(m_pSurface.get());
    unsigned char* const pData = cairo_image_surface_get_data(m_pSurface.get());
    const int nStride = cairo_image_surface_get_stride(m_pSurface.get());
    for (int y = 0; y < m_nHeight; ++y)
    {
        auto* const pRow =
            static_cast<std::uint32_t*>(static_cast<void*>(pData + static_cast<std::ptrdiff_t>(y) * nStride));
        for (int x = 0; x < m_nWidth; ++x)
            pRow[x] = CalcMean(raster, x, y, nScale, m_background);
    }
    cairo_surface_mark_dirty(m_pSurface.get());
}

CPen CPicture::MakePen()
{
    return {m_pSurface.get(), CalcZoom(m_nWidth, m_nHeight), m_background};
}

void CPicture::WritePng(COutFile& out) const
{
    CPngSink sink{out, nullptr};
    const cairo_status_t status = cairo_surface_write_to_png_stream(m_pSurface.get(), CPngSink::Write, &sink);
    if (sink.pError != nullptr)
        std::rethrow_exception(sink.pError);
    if (status != CAIRO_STATUS_SUCCESS)
        throw std::bad_alloc(); // nothing else can fail here
}

} // namespace zorcld
