#include <lasreader.hpp>

#include <formats/CLasGuard.h>
#include <formats/CLaszipReader.h>

#include <laszip/laszip_api.h>

namespace
{

constexpr std::size_t c_nBlockSize = std::size_t{1} << 18U;

} // namespace

LASreader::LASreader() = default;

LASreader::~LASreader()
{
    close();
}

bool LASreader::Open(const CHAR* file_name)
{
    m_pGuard = std::make_unique<CLasGuard>(file_name);
    if (!m_pGuard->Check())
        return false;
    const CLasHeader& lasHeader = m_pGuard->GetHeader();
    header.point_data_format = static_cast<U8>(lasHeader.nFormat);
    header.x_scale_factor = lasHeader.adScale[0];
    header.y_scale_factor = lasHeader.adScale[1];
    header.z_scale_factor = lasHeader.adScale[2];
    header.x_offset = lasHeader.adOffset[0];
    header.y_offset = lasHeader.adOffset[1];
    header.z_offset = lasHeader.adOffset[2];
    npoints = lasHeader.nNumPnts;
    point.quantizer = &header;
    return lasHeader.bCompressed ? OpenLaz() : OpenBlocks();
}

/// LASzip's point has one place. Of formats 6 to 10 the library's reader takes the coordinates only.
bool LASreader::OpenLaz()
{
    m_nPosRgb = offsetof(laszip_point_struct, rgb);
    const auto eParts = LasLayout::IsColorTaken(header.point_data_format) ? CLaszipReader::Parts_AllButTimes
                                                                          : CLaszipReader::Parts_Coords;
    m_pLaszip = std::make_unique<CLaszipReader>(*m_pGuard, eParts);
    return m_pLaszip->IsOpen();
}

/// Goes to the first point of a file that is not compressed.
bool LASreader::OpenBlocks()
{
    const CLasHeader& lasHeader = m_pGuard->GetHeader();
    m_nPntSize = static_cast<std::size_t>(lasHeader.CalcPntSize());
    m_nPosRgb = LasLayout::c_aFormats[header.point_data_format].nPosColor;
    m_vecBlock.resize(c_nBlockSize / m_nPntSize * m_nPntSize);
    m_pFile = m_pGuard->GetStream();
    return fseeko(m_pFile, static_cast<off_t>(lasHeader.nPosPnts), SEEK_SET) == 0;
}

/// Reads LASzip's next point, or the next block of whole points.
bool LASreader::ReadMore()
{
    if (m_pLaszip != nullptr)
    {
        // It begins with the coordinates.
        m_pNext = m_pEnd = reinterpret_cast<const unsigned char*>(m_pLaszip->Read());
        return m_pNext != nullptr;
    }
    if (m_pFile == nullptr)
        return false;
    const std::size_t nNum =
        std::fread(m_vecBlock.data(), m_nPntSize, m_vecBlock.size() / m_nPntSize, m_pFile);
    m_pNext = m_vecBlock.data();
    m_pEnd = m_pNext + nNum * m_nPntSize;
    return nNum > 0;
}

void LASreader::close(BOOL /*close_stream*/)
{
    m_pEnd = m_pNext;
    m_pFile = nullptr;
    m_pLaszip.reset();
    m_pGuard.reset();
}

void LASreadOpener::set_file_name(const CHAR* file_name, BOOL /*unique*/)
{
    m_sFileName = file_name;
}

LASreader* LASreadOpener::open(const CHAR* other_file_name)
{
    auto pReader = std::make_unique<LASreader>();
    if (!pReader->Open(other_file_name != nullptr ? other_file_name : m_sFileName.c_str()))
        return nullptr;
    return pReader.release();
}
