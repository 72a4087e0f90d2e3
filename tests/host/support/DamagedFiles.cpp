#include <tests/host/support/DamagedFiles.h>

#include <tests/host/support/CZorcld.h>
#include <tests/support/CRandom.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <limits>

namespace
{

namespace fs = std::filesystem;

void Overwrite(std::string& sBytes, std::size_t nPos, const void* pValue, std::size_t nSize)
{
    if (nPos + nSize <= sBytes.size())
        std::memcpy(sBytes.data() + nPos, pValue, nSize);
}

void OverwriteNumber(CRandom& random, std::string& sBytes)
{
    constexpr std::int32_t c_nMax = std::numeric_limits<std::int32_t>::max();
    const auto nPos = static_cast<std::size_t>(random.Int(0, static_cast<std::int64_t>(sBytes.size())));
    if (random.Chance(3))
    {
        const float f = random.Pick<float>({0.0F, -1.0F, 1.0e-40F, 3.0e38F, -3.0e38F, 1.0e7F,
                                            std::numeric_limits<float>::infinity(),
                                            std::numeric_limits<float>::quiet_NaN()});
        Overwrite(sBytes, nPos, &f, sizeof f);
        return;
    }
    const auto nAny = static_cast<std::int32_t>(random.Int(-c_nMax, c_nMax));
    const auto nSmall = static_cast<std::int32_t>(random.Int(-20000, 20000));
    const std::int32_t n =
        random.Pick<std::int32_t>({0, 1, -1, c_nMax, -c_nMax - 1, 65536, nAny, nSmall, nSmall});
    Overwrite(sBytes, nPos, &n, sizeof n);
}

/// In one place.
void Damage(CRandom& random, const std::vector<CSeedFile>& vecSeeds, std::string& sBytes)
{
    const auto nSize = static_cast<std::int64_t>(sBytes.size());
    const auto at = [&]
    { return static_cast<std::size_t>(random.Int(0, std::max<std::int64_t>(nSize - 1, 0))); };
    const std::int64_t nKind = random.Int(0, 9);
    if (nKind == 0)
        sBytes.resize(at());
    else if (nKind == 1)
    {
        const std::string& sOther = random.Pick(vecSeeds).sBytes;
        sBytes.resize(at());
        sBytes += sOther.substr(std::min(at(), sOther.size()));
    }
    else if (nKind == 2)
        sBytes.insert(std::min(at(), sBytes.size()),
                      random.Pick<std::string>({std::string(4, '\0'), "1e400 ", "\n", "nan ", "-0.5 "}));
    else if (nKind < 5 && nSize > 0)
        sBytes[at()] = static_cast<char>(random.Int(0, 255));
    else if (nKind == 5 && nSize > 0)
    {
        char& c = sBytes[at()];
        c = static_cast<char>(c ^ (1 << random.Int(0, 7)));
    }
    else
        OverwriteNumber(random, sBytes);
}

void LimitCounts(std::string& sBytes)
{
    constexpr std::size_t c_nCount = 107; // 4 bytes; in versions from 1.4 on also 8 bytes
    constexpr std::size_t c_nLongCount = 247;
    for (std::size_t n = c_nCount + 2; n < std::min(c_nCount + 4, sBytes.size()); ++n)
        sBytes[n] = '\0';
    for (std::size_t n = c_nLongCount + 2; n < std::min(c_nLongCount + 8, sBytes.size()); ++n)
        sBytes[n] = '\0';
}

} // namespace

std::vector<CSeedFile> ReadSeeds(const std::string& sSources)
{
    std::vector<CSeedFile> vecSeeds;
    const auto add = [&](const char* pFolder, const char* pType)
    {
        for (const fs::directory_entry& entry : fs::directory_iterator(sSources + pFolder))
            vecSeeds.push_back({entry.path().string(), pType, ReadBytes(entry.path().string())});
    };
    add("/fuzz/corpus/native", "native");
    add("/tests/data/native", "native");
    add("/fuzz/corpus/ply", "ply");
    add("/fuzz/corpus/ascii_grid", "grid");
    if (CZorcld::HasLas())
        add("/fuzz/corpus/las", "las");
    std::sort(vecSeeds.begin(), vecSeeds.end(),
              [](const CSeedFile& a, const CSeedFile& b) { return a.sName < b.sName; });
    return vecSeeds;
}

std::vector<CSeedFile> OfType(const std::vector<CSeedFile>& vecAll, const std::string& sType)
{
    std::vector<CSeedFile> vecSeeds;
    std::copy_if(vecAll.begin(), vecAll.end(), std::back_inserter(vecSeeds),
                 [&](const CSeedFile& seed) { return seed.sType == sType; });
    return vecSeeds;
}

CSeedFile MakeDamaged(const std::vector<CSeedFile>& vecSeeds, int nFile)
{
    CRandom random(static_cast<std::uint64_t>(nFile));
    CSeedFile file = random.Pick(vecSeeds);
    for (std::int64_t i = random.Int(1, 4); i > 0; --i)
        Damage(random, vecSeeds, file.sBytes);
    if (file.sType == "las")
        LimitCounts(file.sBytes);
    return file;
}
