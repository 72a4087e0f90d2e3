#include <lasreader.hpp>

#include <laszip/laszip_api.h>

LASreader::~LASreader()
{
    close();
}

bool LASreader::Open(const CHAR* file_name)
{
    laszip_BOOL bCompressed = 0;
    laszip_header_struct* pHeader = nullptr;
    laszip_point_struct* pPoint = nullptr;
    if (laszip_create(&m_pLaszip) != 0 || laszip_open_reader(m_pLaszip, file_name, &bCompressed) != 0 ||
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
    point.m_pXyz = &pPoint->X;
    point.rgb = pPoint->rgb;
    static_assert(offsetof(laszip_point_struct, Y) == sizeof(I32) &&
                  offsetof(laszip_point_struct, Z) == 2 * sizeof(I32));
    return true;
}

BOOL LASreader::read_point()
{
    if (m_nNumRead >= npoints || m_pLaszip == nullptr || laszip_read_point(m_pLaszip) != 0)
        return FALSE;
    ++m_nNumRead;
    return TRUE;
}

void LASreader::close(BOOL /*close_stream*/)
{
    if (m_pLaszip == nullptr)
        return;
    laszip_close_reader(m_pLaszip);
    laszip_destroy(m_pLaszip);
    m_pLaszip = nullptr;
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
