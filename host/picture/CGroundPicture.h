#ifndef HOST_PICTURE_CGROUNDPICTURE_H
#define HOST_PICTURE_CGROUNDPICTURE_H

#include <host/picture/CPictureUnits.h>
#include <host/picture/CScreenPnt.h>
#include <host/picture/ViewRaster.h>

#include <cstdint>
#include <string>
#include <vector>

class CPntCld;

namespace zorcld
{

class COutFile;

/// Two pictures from above in one, of a cloud before and after points were taken away: at the same scale
/// and in the same colours, side by side, or one below the other where that makes them larger.
class CGroundPicture
{
public:
    /// How the picture is wanted.
    struct COptions
    {
        int nWidth = 0; ///< pixels
        int nHeight = 0;
        std::string sTitle;
        CPictureUnits units;
        bool bByHeight = true; ///< else in the colours of the file
    };

    explicit CGroundPicture(const COptions& options) : m_options(options) {}

    /// Takes the points of the first part, and the extent of both.
    void AddBefore(const CPntCld& cloud);

    /// Takes the points of the second part from the same cloud, which has fewer now.
    void AddAfter(const CPntCld& cloud);

    /// Draws the picture and writes it as PNG, not yet committed.
    /// @throws CFailure
    void Write(COutFile& out);

private:
    static constexpr std::size_t c_nNumParts = 2;

    void FitParts();
    void AddPnts(const CPntCld& cloud, std::size_t nPart);
    void ColorByHeight();
    std::string FormatShare() const;

    COptions m_options;
    COverview m_overview; // of all points, but for the range of colours
    CFrame m_frames[c_nNumParts];
    CArea m_captions[c_nNumParts]; // their lines of text
    std::int64_t m_nNumPnts[c_nNumParts] = {0, 0};
    std::vector<CScreenPnt> m_vecPnts;
};

} // namespace zorcld

#endif
