#include <formats/CLaszipReader.h>

#include <formats/CLasGuard.h>

#include <laszip/laszip_api.h>

#include <cstring>
#include <new>

CLaszipReader::CLaszipReader(CLasGuard& guard, enumParts eParts)
    : m_guard(guard), m_file(guard.GetStream(), guard.GetPatches())
{
    if (laszip_create(&m_pLaszip) != 0)
        throw std::bad_alloc();
    constexpr laszip_U32 c_nCoords = laszip_DECOMPRESS_SELECTIVE_Z; // x and y always are
    constexpr laszip_U32 c_nTimes = laszip_DECOMPRESS_SELECTIVE_GPS_TIME;
    laszip_decompress_selective(
        m_pLaszip, eParts == Parts_Coords ? c_nCoords : laszip_DECOMPRESS_SELECTIVE_ALL & ~c_nTimes);
    if (!Open())
    {
        m_pPnt = nullptr;
        m_pLaszip = nullptr; // opened by halves
    }
}

bool CLaszipReader::Open()
{
    laszip_BOOL bCompressed = 0;
    m_file.StartHere();
    if (laszip_open_reader_stream(m_pLaszip, m_file, &bCompressed) != 0)
        return TellFailure();
    return laszip_get_point_pointer(m_pLaszip, &m_pPnt) == 0;
}

CLaszipReader::~CLaszipReader()
{
    if (m_pLaszip == nullptr)
        return;
    laszip_close_reader(m_pLaszip);
    laszip_destroy(m_pLaszip);
}

const laszip_point* CLaszipReader::Read()
{
    if (m_nLeftInChunk == 0 && !EnterChunk())
        return nullptr;
    --m_nLeftInChunk;
    m_file.StartHere();
    const bool bRead = laszip_read_point(m_pLaszip) == 0 || TellFailure();
    return bRead && !IsBehindPnts() ? m_pPnt : nullptr;
}

/// LASzip goes on behind the last point where the header announces more, and takes the table of chunks for
/// code. After each point it has taken as many bytes as were written with it, and no more.
bool CLaszipReader::IsBehindPnts() const noexcept
{
    return m_guard.GetPosEnd() > 0 && m_file.GetPos() > m_guard.GetPosEnd();
}

/// LASzip tells a lack of memory from damaged data in its message only: everything that is thrown in it but
/// for the numbers that mean damaged data is an internal error, and nothing but a lack of memory is.
///
/// @return false.
bool CLaszipReader::TellFailure()
{
    constexpr char c_acInternal[] = "internal error";
    laszip_CHAR* pMessage = nullptr;
    const bool bTold = laszip_get_error(m_pLaszip, &pMessage) == 0 && pMessage != nullptr;
    if (!bTold || std::strncmp(pMessage, c_acInternal, sizeof c_acInternal - 1) != 0)
        return false;
    m_pLaszip = nullptr;
    m_pPnt = nullptr;
    throw std::bad_alloc();
}

/// A chunk ends where the next one begins: else it is damaged, and what follows would come from anywhere.
bool CLaszipReader::EnterChunk()
{
    const CLazGuard& laz = m_guard.GetLaz();
    const std::vector<std::int64_t>& vecStarts = laz.GetStarts();
    const std::size_t nChunk = m_nNumChunks++;
    m_nLeftInChunk = laz.GetChunkSize() > 0 ? laz.GetChunkSize() : std::numeric_limits<std::int64_t>::max();
    // Of the first one LASzip has yet to find the beginning.
    return nChunk == 0 || nChunk >= vecStarts.size() || m_file.tellg() == vecStarts[nChunk];
}
