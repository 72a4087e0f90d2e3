#include <lasreader.hpp>

#include <formats/CLazFile.h>
#include <formats/LasLayout.h>

#include <laszip/laszip_api.h>

#include <memory>

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
    laszip_BOOL bCompressed = 0;
    laszip_header_struct* pHeader = nullptr;
    laszip_point_struct* pPoint = nullptr;
    m_pLazFile = std::make_unique<CLazFile>(file_name);
    if (laszip_create(&m_pLaszip) != 0 ||
        laszip_open_reader_stream(m_pLaszip, *m_pLazFile, &bCompressed) != 0 ||
        laszip_get_header_pointer(m_pLaszip, &pHeader) != 0 ||
        laszip_get_point_pointer(m_pLaszip, &pPoint) != 0)
        return false;

    header.point_data_format = pHeader->point_data_format;
    header.x_scale_factor = pHeader->x_scale_factor;
    header.y_scale_factor = pHeader->y_scale_factor;
    header.z_scale_factor = pHeader->z_scale_factor;
    header.x_offset = pHeader->x_offset;
    header.y_offset = pHeader->y_offset;
    header.z_offset = pHeader->z_offset;
    // The count of 32 bits holds unless it is 0: a file of many points or of a later format has it elsewhere.
    npoints = pHeader->number_of_point_records != 0
                  ? static_cast<I64>(pHeader->number_of_point_records)
                  : static_cast<I64>(pHeader->extended_number_of_point_records);
    point.quantizer = &header;
    if (bCompressed != 0)
    {
        m_pNext = m_pEnd = reinterpret_cast<const unsigned char*>(pPoint); // it begins with the coordinates
        m_nPosRgb = offsetof(laszip_point_struct, rgb);
        return true;
    }
    if (header.point_data_format >= LasLayout::c_aFormats.size())
        return false;
    m_nPntSize = pHeader->point_data_record_length;
    m_nPosRgb = LasLayout::c_aFormats[header.point_data_format].nPosColor;
    const I64 nPosPnts = pHeader->offset_to_point_data;
    close();
    return OpenBlocks(file_name, nPosPnts);
}

/// Opens the file at its first point, which is not compressed.
bool LASreader::OpenBlocks(const CHAR* file_name, I64 nPosPnts)
{
    m_pFile = std::fopen(file_name, "rb");
    if (m_pFile == nullptr || m_nPntSize == 0)
        return false;
    static_cast<void>(std::setvbuf(m_pFile, nullptr, _IONBF, 0)); // the block is the buffer
    m_vecBlock.resize(c_nBlockSize / m_nPntSize * m_nPntSize);
    return fseeko(m_pFile, static_cast<off_t>(nPosPnts), SEEK_SET) == 0;
}

/// Reads LASzip's next point, or the next block of whole points.
bool LASreader::ReadMore()
{
    if (m_pLaszip != nullptr)
    {
        m_pLazFile->StartHere();
        return laszip_read_point(m_pLaszip) == 0;
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
    if (m_pFile != nullptr)
        static_cast<void>(std::fclose(m_pFile));
    m_pFile = nullptr;
    if (m_pLaszip != nullptr)
    {
        laszip_close_reader(m_pLaszip);
        laszip_destroy(m_pLaszip);
    }
    m_pLaszip = nullptr;
    m_pLazFile.reset();
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
