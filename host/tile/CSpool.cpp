#include <host/tile/CSpool.h>

#include <formats/CFilePtr.h>
#include <formats/LittleEndian.h>
#include <formats/NativeFormat.h>
#include <host/output/CFailure.h>
#include <host/tile/FindMemory.h>
#include <host/tile/NameTile.h>

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

/// Bytes in memory at once.
std::size_t CalcMaxBytes()
{
    constexpr double c_dMost = 24.0 * 1048576.0;
    constexpr double c_dShare = 0.1;
    return static_cast<std::size_t>(std::min(c_dMost, c_dShare * FindMemory()));
}

/// As much for each tile as there is for all, with room for as many that may come, but not so little that
/// writing takes long, and not more than makes it any faster.
std::size_t CalcPieceSize(std::size_t nMaxBytes, std::size_t nNumTiles, CSpool::enumTiles eTiles)
{
    if (eTiles == CSpool::Tiles_Growing)
        nNumTiles *= 2;
    constexpr std::size_t c_nLeast = std::size_t{4} << 10U;
    constexpr std::size_t c_nMost = std::size_t{512} << 10U;
    return std::clamp(nMaxBytes / std::max<std::size_t>(nNumTiles, 1), c_nLeast, c_nMost);
}

std::size_t GetPntSize(bool bColor)
{
    return bColor ? c_nNativeColorPntSize : c_nNativePntSize;
}

} // namespace

CSpool::CSpool(std::string sFolder, const CKind& kind, const std::vector<CTileCount>& vecTiles,
               enumTiles eTiles)
    : m_sFolder(std::move(sFolder)), m_kind(kind), m_vecTiles(vecTiles), m_eTiles(eTiles),
      m_nPntSize(GetPntSize(kind.bColor)), m_nMaxBytes(CalcMaxBytes()),
      m_nPieceSize(CalcPieceSize(m_nMaxBytes, vecTiles.size(), eTiles)), m_vecPieces(vecTiles.size())
{
}

std::int64_t CSpool::CalcSize(bool bColor, const CTileCount& tile)
{
    return static_cast<std::int64_t>(c_nNativeHeaderSize) +
           tile.nNumAll * static_cast<std::int64_t>(GetPntSize(bColor));
}

void CSpool::PutHead(std::size_t nTile)
{
    std::array<unsigned char, c_nNativeHeaderSize> acHead{};
    std::copy(c_acNativePrologue.begin(), c_acNativePrologue.end(), acHead.begin());
    LittleEndian::Put(acHead.data() + c_nNativeTypePos, static_cast<std::int16_t>(m_kind.bColor ? 1 : 0));
    unsigned char* pOrigin = acHead.data() + c_nNativeOriginPos;
    for (const float f : m_kind.origin)
        pOrigin = LittleEndian::Put(pOrigin, f);
    LittleEndian::Put(acHead.data() + c_nNativeNumPntsPos,
                      static_cast<std::int32_t>(m_vecTiles[nTile].nNumAll)); // checked: it is an int32;
                                                                             // of growing tiles see PutNum
    m_vecPieces[nTile].bStarted = true;
    Append(nTile, acHead.data(), acHead.size());
}

void CSpool::Pack(const CTilePnt* pPnts, std::size_t nNum)
{
    m_vecPacked.resize(nNum * m_nPntSize + c_nNativeColorPntSize); // room behind the last one
    unsigned char* pRecord = m_vecPacked.data();
    for (std::size_t i = 0; i < nNum; ++i, pRecord += m_nPntSize)
    {
        std::memcpy(pRecord, pPnts[i].anSteps.data(), c_nNativePntSize);
        for (std::size_t k = 0; k < 3; ++k) // without colours the next point goes over them
            pRecord[c_nNativePntSize + k] = static_cast<unsigned char>(pPnts[i].anColor[k]);
    }
}

void CSpool::Add(const CTileTable::CZone& zone, const CTilePnt* pPnts, std::size_t nNum)
{
    if (zone.vecTiles.empty())
        return;
    if (m_vecPieces.size() < m_vecTiles.size())
        m_vecPieces.resize(m_vecTiles.size());
    Pack(pPnts, nNum);
    for (const std::size_t nTile : zone.vecTiles)
    {
        if (!m_vecPieces[nTile].bStarted)
            PutHead(nTile);
        Append(nTile, m_vecPacked.data(), nNum * m_nPntSize);
        m_vecPieces[nTile].nNumPnts += static_cast<std::int64_t>(nNum);
        m_vecPieces[nTile].hash = AddToHash(m_vecPieces[nTile].hash, pPnts, nNum);
    }
}

CPntsHash CSpool::AddToHash(CPntsHash hash, const CTilePnt* pPnts, std::size_t nNum) const
{
    std::array<unsigned char, 3> acColor{};
    for (std::size_t i = 0; i < nNum; ++i)
    {
        for (std::size_t k = 0; m_kind.bColor && k < 3; ++k)
            acColor[k] = static_cast<unsigned char>(pPnts[i].anColor[k]);
        hash.Add(pPnts[i].anSteps, acColor);
    }
    return hash;
}

void CSpool::Append(std::size_t nTile, const unsigned char* pBytes, std::size_t nNum)
{
    CPiece& piece = m_vecPieces[nTile];
    while (nNum > 0)
    {
        Reserve(piece);
        const std::size_t nNow = std::min(nNum, m_nPieceSize - piece.vecBytes.size());
        piece.vecBytes.insert(piece.vecBytes.end(), pBytes, pBytes + nNow);
        pBytes += nNow;
        nNum -= nNow;
        if (piece.vecBytes.size() == m_nPieceSize)
            WritePiece(nTile);
    }
}

void CSpool::Reserve(CPiece& piece)
{
    if (piece.vecBytes.capacity() > 0)
        return;
    if ((m_nNumReserved + 1) * m_nPieceSize > m_nMaxBytes)
        WriteAll();
    piece.vecBytes.reserve(m_nPieceSize);
    ++m_nNumReserved;
}

void CSpool::WritePiece(std::size_t nTile)
{
    std::vector<unsigned char>& vecBytes = m_vecPieces[nTile].vecBytes;
    if (vecBytes.empty())
        return;
    const std::string sPath = m_sFolder + "/" + NameTile(m_vecTiles[nTile].cell);
    CFilePtr pFile(std::fopen(sPath.c_str(), "ab"));
    if (pFile == nullptr)
        throw CFailure(sPath, std::string("cannot be created: ") + std::strerror(errno));
    static_cast<void>(std::setvbuf(pFile.get(), nullptr, _IONBF, 0)); // written in one piece
    const bool bWritten = std::fwrite(vecBytes.data(), 1, vecBytes.size(), pFile.get()) == vecBytes.size();
    if (std::fclose(pFile.release()) != 0 || !bWritten)
        throw CFailure(sPath, std::string("could not be written: ") + std::strerror(errno));
    vecBytes.clear();
}

void CSpool::WriteAll()
{
    for (std::size_t i = 0; i < m_vecPieces.size(); ++i)
    {
        WritePiece(i);
        std::vector<unsigned char>().swap(m_vecPieces[i].vecBytes);
    }
    m_nNumReserved = 0;
    m_nPieceSize = CalcPieceSize(m_nMaxBytes, m_vecTiles.size(), m_eTiles);
}

/// Corrects the number of points in the head of a tile's file.
void CSpool::PutNum(std::size_t nTile)
{
    const std::string sPath = m_sFolder + "/" + NameTile(m_vecTiles[nTile].cell);
    std::array<unsigned char, sizeof(std::int32_t)> acNum{};
    LittleEndian::Put(acNum.data(), static_cast<std::int32_t>(m_vecTiles[nTile].nNumAll));
    CFilePtr pFile(std::fopen(sPath.c_str(), "r+b"));
    const bool bWritten = pFile != nullptr &&
                          std::fseek(pFile.get(), static_cast<long>(c_nNativeNumPntsPos), SEEK_SET) == 0 &&
                          std::fwrite(acNum.data(), 1, acNum.size(), pFile.get()) == acNum.size();
    if (!bWritten || std::fclose(pFile.release()) != 0)
        throw CFailure(sPath, std::string("could not be written: ") + std::strerror(errno));
}

std::map<CCell, std::uint64_t> CSpool::GetHashes() const
{
    std::map<CCell, std::uint64_t> mapHashes;
    for (std::size_t i = 0; i < m_vecTiles.size(); ++i)
        mapHashes.emplace(m_vecTiles[i].cell, m_vecPieces[i].hash.Get());
    return mapHashes;
}

bool CSpool::Finish()
{
    WriteAll();
    for (std::size_t i = 0; i < m_vecTiles.size(); ++i)
        if (m_vecPieces[i].nNumPnts != m_vecTiles[i].nNumAll)
            return false;
    for (std::size_t i = 0; m_eTiles == Tiles_Growing && i < m_vecTiles.size(); ++i)
        PutNum(i);
    return true;
}

} // namespace zorcld
