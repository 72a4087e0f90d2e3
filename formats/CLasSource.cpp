#include <formats/CLasSource.h>

#include <formats/CLasGuard.h>
#include <formats/CLazFile.h>
#include <formats/LasFindings.h>

#include <laszip/laszip_api.h>

#include <algorithm>

namespace
{

/// LASzip with one file open, before its first point.
class CLaszipReader
{
public:
    /// @param guard  of the file, which it has let through, or has found fault with its records only: LASzip
    /// trusts what it reads.
    explicit CLaszipReader(CLasGuard& guard) : m_file(guard.GetStream(), guard.HasBadRecordsOnly())
    {
        laszip_BOOL bCompressed = 0;
        m_bOpen = laszip_create(&m_pLaszip) == 0 &&
                  laszip_open_reader_stream(m_pLaszip, m_file, &bCompressed) == 0 &&
                  laszip_get_point_pointer(m_pLaszip, &m_pPnt) == 0;
    }

    ~CLaszipReader()
    {
        if (m_pLaszip == nullptr)
            return;
        laszip_close_reader(m_pLaszip);
        laszip_destroy(m_pLaszip);
    }

    CLaszipReader(const CLaszipReader&) = delete;
    CLaszipReader& operator=(const CLaszipReader&) = delete;

    bool IsOpen() const { return m_bOpen; }

    /// @return the next point, until the next call; null where the points end or cannot be decoded.
    const laszip_point_struct* Read()
    {
        m_file.StartHere();
        return laszip_read_point(m_pLaszip) == 0 ? m_pPnt : nullptr;
    }

private:
    CLazFile m_file;
    laszip_POINTER m_pLaszip = nullptr;
    laszip_point_struct* m_pPnt = nullptr;
    bool m_bOpen = false;
};

/// LASzip splits what shares a byte, and keeps formats from 6 on apart.
CLasAttributes AttributesFromLasPnt(const laszip_point_struct& las, bool bLater)
{
    CLasAttributes attributes;
    attributes.nIntensity = las.intensity;
    if (bLater)
    {
        attributes.nClass = las.extended_classification;
        attributes.nReturn = las.extended_return_number;
        attributes.nFlags = las.extended_classification_flags;
        return attributes;
    }
    const unsigned nFlags = las.synthetic_flag * CLasAttributes::Flag_Synthetic +
                            las.keypoint_flag * CLasAttributes::Flag_KeyPoint +
                            las.withheld_flag * CLasAttributes::Flag_Withheld;
    attributes.nClass = las.classification;
    attributes.nReturn = las.return_number;
    attributes.nFlags = static_cast<std::uint8_t>(nFlags);
    return attributes;
}

/// The points of a LAS or LAZ file as LASzip reads them, with the colours of every format that has them.
class CLasSource final : public IPntSource
{
public:
    explicit CLasSource(CLasGuard& guard) : m_guard(guard), m_header(guard.GetHeader()) {}

    bool HasColor() const override { return m_header.HasColor(); }

    std::int64_t GetNumAnnounced() const override { return m_header.nNumPnts; }

    std::string ForEach(const TOnPnt& onPnt) override
    {
        CLaszipReader reader(m_guard);
        if (!reader.IsOpen())
            return "its LAS data are damaged or cut off";
        const std::int64_t nNumPnts = std::min(m_header.nNumPnts, m_guard.GetMaxNumPnts());
        const laszip_point_struct* pPnt = nullptr;
        for (m_nNumRead = 0; m_nNumRead < nNumPnts && (pPnt = reader.Read()) != nullptr; ++m_nNumRead)
            onPnt(SourceFromLasPnt(*pPnt));
        return {};
    }

    /// Of a compressed file, only reading it tells how many points it holds.
    std::vector<CFinding> GetFindings() const override
    {
        if (!m_header.bCompressed || m_nNumRead >= m_header.nNumPnts)
            return {};
        return {FindUnreadPnts(m_header.nNumPnts, m_nNumRead)};
    }

private:
    CSourcePnt SourceFromLasPnt(const laszip_point_struct& las) const
    {
        CSourcePnt pnt;
        pnt.x = las.X * m_header.adScale[0] + m_header.adOffset[0];
        pnt.y = las.Y * m_header.adScale[1] + m_header.adOffset[1];
        pnt.z = las.Z * m_header.adScale[2] + m_header.adOffset[2];
        pnt.attributes = AttributesFromLasPnt(las, m_header.nFormat >= LasLayout::c_nFirstLaterFormat);
        if (!HasColor())
            return pnt;
        pnt.r = las.rgb[0];
        pnt.g = las.rgb[1];
        pnt.b = las.rgb[2];
        return pnt;
    }

    CLasGuard& m_guard;
    const CLasHeader& m_header;
    std::int64_t m_nNumRead = 0;
};

} // namespace

CMadeSource MakeLasSource(CLasGuard& guard)
{
    if (!guard.GetCause().empty() && !guard.HasBadRecordsOnly())
        return {nullptr, guard.GetCause()};
    return {std::make_unique<CLasSource>(guard), {}};
}
