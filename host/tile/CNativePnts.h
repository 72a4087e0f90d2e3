#ifndef HOST_TILE_CNATIVEPNTS_H
#define HOST_TILE_CNATIVEPNTS_H

#include <formats/CByteReader.h>
#include <formats/CNativeHeader.h>
#include <host/tile/ITileSource.h>

#include <cstddef>
#include <string>

namespace zorcld
{

/// The points of a native file, read without a cloud. With the origin of the file the numbers are taken as
/// they stand.
class CNativePnts final : public ITileSource
{
public:
    /// @throws CFailure when the file is not whole.
    explicit CNativePnts(const std::string& sPath);

    bool HasColor() const override { return m_header.nType == 1; }
    std::int64_t GetNumAnnounced() const override { return m_header.nNumPnts; }
    CTileUnits GetUnits() const override { return {}; }
    std::optional<TOrigin> FindOrigin() override { return m_header.afOrg; }
    void ForEach(const TOrigin& origin, const TOnPnts& onPnts) override;
    std::vector<std::string> GetNotes() const override { return {}; }

private:
    CTilePnt Parse(const unsigned char* pRecord, const TOrigin& origin, bool bSameOrigin) const;

    std::string m_sPath;
    CByteReader m_reader;
    CNativeHeader m_header;
};

} // namespace zorcld

#endif
