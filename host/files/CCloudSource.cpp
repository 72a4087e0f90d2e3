#include <host/files/CCloudSource.h>

#include <host/files/CFileColors.h>
#include <host/files/CInputFile.h>
#include <host/files/LoadCloud.h>
#include <host/output/FormatCount.h>
#include <zor4data/CPntCld.h>

#include <fmt/format.h>

namespace zorcld
{

namespace
{

class CCloudSource final : public IPntSource
{
public:
    CCloudSource(CInputFile& file, const CConsole& console) : m_cloud(&m_colors)
    {
        const CLoadFacts facts = LoadCloud(m_cloud, file, console);
        RefuseMovedPnts(facts, file.GetPath());
        m_nDuplicates = facts.nDuplicates;
    }

    bool HasColor() const override { return m_cloud.IsWithColor(); }

    std::int64_t GetNumAnnounced() const override { return m_cloud.GetNumPnts(); }

    std::string ForEach(const TOnPnt& onPnt) override
    {
        for (int i = 0; i < m_cloud.GetNumPnts(); ++i)
        {
            zor::geom::PNT_3D pnt;
            m_cloud.GetPnt(i, pnt);
            unsigned char r = 0;
            unsigned char g = 0;
            unsigned char b = 0;
            static_cast<void>(m_cloud.GetPntColor(i, r, g, b)); // black without colours
            onPnt({pnt.x, pnt.y, pnt.z, r, g, b});
        }
        return {};
    }

    std::vector<CFinding> GetFindings() const override
    {
        if (m_nDuplicates <= 0)
            return {};
        return {{"duplicates",
                 fmt::format("{} at the x and y of another point, whatever {} height, {} removed",
                             FormatCount(m_nDuplicates, "point"), OneOrMany(m_nDuplicates, "its", "their"),
                             OneOrMany(m_nDuplicates, "was", "were")),
                 false, ""}};
    }

private:
    CFileColors m_colors;
    CPntCld m_cloud;
    std::int64_t m_nDuplicates = 0;
};

} // namespace

std::unique_ptr<IPntSource> MakeCloudSource(CInputFile& file, const CConsole& console)
{
    return std::make_unique<CCloudSource>(file, console);
}

} // namespace zorcld
