#include <host/tile/CSpool.h>

#include <formats/CFilePtr.h>
#include <formats/LittleEndian.h>
#include <formats/NativeFormat.h>
#include <host/output/CFailure.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

namespace zorcld
{

namespace
{

constexpr std::size_t c_nMaxBytes = std::size_t{24} << 20U; // in memory at once

std::size_t GetPntSize(const CTilePlan& plan)
{
    return plan.bColor ? c_nNativeColorPntSize : c_nNativePntSize;
}

} // namespace

CSpool::CSpool(std::string sFolder, const CTilePlan& plan, const std::vector<CTileCount>& vecTiles)
    : m_sFolder(std::move(sFolder)), m_plan(plan), m_vecTiles(vecTiles), m_vecPieces(vecTiles.size())
{
}

std::int64_t CSpool::CalcSize(const CTilePlan& plan, const CTileCount& tile)
{
    return static_cast<std::int64_t>(c_nNativeHeaderSize) +
           tile.nNumAll * static_cast<std::int64_t>(GetPntSize(plan));
}

void CSpool::PutHead(std::size_t nTile)
{
    std::array<unsigned char, c_nNativeHeaderSize> acHead{};
    std::copy(c_acNativePrologue.begin(), c_acNativePrologue.end(), acHead.begin());
    LittleEndian::Put(acHead.data() + c_nNativeTypePos, static_cast<std::int16_t>(m_plan.bColor ? 1 : 0));
    unsigned char* pOrigin = acHead.data() + c_nNativeOriginPos;
    for (const float f : m_plan.origin)
        pOrigin = LittleEndian::Put(pOrigin, f);
    LittleEndian::Put(acHead.data() + c_nNativeNumPntsPos,
                      static_cast<std::int32_t>(m_vecTiles[nTile].nNumAll)); // checked: it is an int32
    CPiece& piece = m_vecPieces[nTile];
    piece.vecBytes.assign(acHead.begin(), acHead.end());
    piece.bStarted = true;
}

void CSpool::Add(std::size_t nTile, const CTilePnt& pnt)
{
    CPiece& piece = m_vecPieces[nTile];
    const std::size_t nBefore = piece.vecBytes.capacity();
    if (!piece.bStarted)
        PutHead(nTile);
    std::array<unsigned char, c_nNativeColorPntSize> acRecord{};
    unsigned char* p = acRecord.data();
    for (const std::int32_t n : pnt.anSteps)
        p = LittleEndian::Put(p, n);
    for (const std::uint16_t n : pnt.anColor)
        *p++ = static_cast<unsigned char>(n);
    piece.vecBytes.insert(piece.vecBytes.end(), acRecord.begin(),
                          acRecord.begin() + static_cast<std::ptrdiff_t>(GetPntSize(m_plan)));
    ++piece.nNumPnts;
    m_nNumBytes += piece.vecBytes.capacity() - nBefore;
    if (m_nNumBytes > c_nMaxBytes)
        WriteAll();
}

void CSpool::WritePiece(std::size_t nTile)
{
    std::vector<unsigned char> vecBytes;
    vecBytes.swap(m_vecPieces[nTile].vecBytes);
    if (vecBytes.empty())
        return;
    const std::string sPath = m_sFolder + "/" + NameTile(m_vecTiles[nTile].cell);
    CFilePtr pFile(std::fopen(sPath.c_str(), "ab"));
    if (pFile == nullptr)
        throw CFailure(sPath, std::string("cannot be created: ") + std::strerror(errno));
    const bool bWritten = std::fwrite(vecBytes.data(), 1, vecBytes.size(), pFile.get()) == vecBytes.size();
    if (std::fclose(pFile.release()) != 0 || !bWritten)
        throw CFailure(sPath, std::string("could not be written: ") + std::strerror(errno));
}

void CSpool::WriteAll()
{
    for (std::size_t i = 0; i < m_vecPieces.size(); ++i)
        WritePiece(i);
    m_nNumBytes = 0;
}

void CSpool::Finish()
{
    WriteAll();
    for (std::size_t i = 0; i < m_vecTiles.size(); ++i)
        if (m_vecPieces[i].nNumPnts != m_vecTiles[i].nNumAll)
            throw CFailure(m_plan.vecFiles.front().file.sPath,
                           "it, or one of the files behind it, was changed while it was read");
}

} // namespace zorcld
