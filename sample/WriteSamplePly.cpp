#include <sample/WriteSamplePly.h>

#include <formats/MakePlyHead.h>

#include <array>
#include <cstring>
#include <string>

namespace
{

constexpr std::size_t c_nRecord = 15; // three floats and three bytes

void PutFloat(unsigned char* pTarget, double d)
{
    const auto f = static_cast<float>(d);
    std::uint32_t nBits = 0;
    std::memcpy(&nBits, &f, sizeof(nBits));
    for (unsigned int k = 0; k < 4; ++k)
        pTarget[k] = static_cast<unsigned char>(nBits >> (8U * k));
}

void PutPnt(unsigned char* pTarget, const CSamplePnt& pnt)
{
    PutFloat(pTarget, pnt.x - CSampleTerrain::c_dOrgX);
    PutFloat(pTarget + 4, pnt.y - CSampleTerrain::c_dOrgY);
    PutFloat(pTarget + 8, pnt.z);
    pTarget[12] = pnt.r;
    pTarget[13] = pnt.g;
    pTarget[14] = pnt.b;
}

std::string MakeShiftComment()
{
    std::array<char, 100> acText{};
    static_cast<void>(std::snprintf(acText.data(), acText.size(), "coordinates are shifted: add %.0f %.0f 0",
                                    CSampleTerrain::c_dOrgX, CSampleTerrain::c_dOrgY));
    return acText.data();
}

} // namespace

bool WriteSamplePly(const CSampleTerrain& terrain, std::FILE* pFile,
                    const std::function<void(int)>& onProgress)
{
    const std::int64_t nNumPnts = terrain.GetNumPnts();
    const std::string sHead = MakePlyHead(nNumPnts, true, {"synthetic terrain", MakeShiftComment()});
    if (std::fputs(sHead.c_str(), pFile) == EOF)
        return false;

    constexpr std::int64_t c_nChunk = 4096;
    std::vector<unsigned char> vecChunk(c_nRecord * c_nChunk);
    for (std::int64_t nFirst = 0; nFirst < nNumPnts; nFirst += c_nChunk)
    {
        const std::int64_t nEnd = nFirst + c_nChunk < nNumPnts ? nFirst + c_nChunk : nNumPnts;
        unsigned char* pTarget = vecChunk.data();
        for (std::int64_t i = nFirst; i < nEnd; ++i, pTarget += c_nRecord)
            PutPnt(pTarget, terrain.CalcPnt(i));
        const auto nBytes = static_cast<std::size_t>(pTarget - vecChunk.data());
        if (std::fwrite(vecChunk.data(), 1, nBytes, pFile) != nBytes)
            return false;
        if (onProgress)
            onProgress(static_cast<int>(nEnd * 100 / nNumPnts));
    }
    return true;
}
