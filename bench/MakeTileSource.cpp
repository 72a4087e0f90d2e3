// Writes the made-up terrain as LAS or LAZ of format 0, for what is measured with tiles: one point after the
// other, so that memory does not grow with their number.
//
//   zor4data_tile_source OUT.las|OUT.laz POINTS

#include <sample/CSampleTerrain.h>

#include <laszip/laszip_api.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace
{

/// LASzip tells failures by numbers other than 0.
class CLasOut
{
public:
    CLasOut(const char* pPath, std::int64_t nNumPnts)
    {
        laszip_header_struct* pHeader = nullptr;
        m_nFailed = laszip_create(&m_pLaszip) + laszip_get_header_pointer(m_pLaszip, &pHeader) +
                    laszip_get_point_pointer(m_pLaszip, &m_pPnt);
        if (m_nFailed != 0)
            return;
        pHeader->version_major = 1;
        pHeader->version_minor = 2;
        pHeader->header_size = 227;
        pHeader->offset_to_point_data = 227;
        pHeader->point_data_format = 0;
        pHeader->point_data_record_length = 20;
        pHeader->number_of_point_records = static_cast<laszip_U32>(nNumPnts);
        pHeader->x_scale_factor = pHeader->y_scale_factor = pHeader->z_scale_factor = 0.001;
        pHeader->x_offset = CSampleTerrain::c_dOrgX;
        pHeader->y_offset = CSampleTerrain::c_dOrgY;
        const std::size_t nLength = std::strlen(pPath);
        const bool bCompressed = nLength > 4 && std::strcmp(pPath + nLength - 4, ".laz") == 0;
        m_nFailed = laszip_open_writer(m_pLaszip, pPath, bCompressed ? 1 : 0);
    }

    void Add(const CSamplePnt& pnt)
    {
        const auto toSteps = [](double d) { return static_cast<laszip_I32>(std::lround(d * 1000.0)); };
        m_pPnt->X = toSteps(pnt.x - CSampleTerrain::c_dOrgX);
        m_pPnt->Y = toSteps(pnt.y - CSampleTerrain::c_dOrgY);
        m_pPnt->Z = toSteps(pnt.z);
        m_nFailed += laszip_write_point(m_pLaszip);
    }

    bool Close()
    {
        m_nFailed += laszip_close_writer(m_pLaszip);
        return m_nFailed + laszip_destroy(m_pLaszip) == 0;
    }

    bool HasFailed() const { return m_nFailed != 0; }

private:
    laszip_POINTER m_pLaszip = nullptr;
    laszip_point_struct* m_pPnt = nullptr;
    laszip_I32 m_nFailed = 0;
};

} // namespace

int main(int nNumArgs, char** pArgs)
{
    if (nNumArgs != 3)
    {
        std::fprintf(stderr, "usage: zor4data_tile_source OUT.las|OUT.laz POINTS\n");
        return 2;
    }
    const CSampleTerrain terrain(std::atoll(pArgs[2]));
    CLasOut out(pArgs[1], terrain.GetNumPnts());
    for (std::int64_t i = 0; i < terrain.GetNumPnts() && !out.HasFailed(); ++i)
        out.Add(terrain.CalcPnt(i));
    if (!out.HasFailed() && out.Close())
        return 0;
    std::fprintf(stderr, "%s: could not be written\n", pArgs[1]);
    return 1;
}
