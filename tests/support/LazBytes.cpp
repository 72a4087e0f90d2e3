#include <tests/support/LazBytes.h>

#include <laszip/laszip_api.h>

#include <sstream>
#include <stdexcept>

// LASzip does not release everything where it writes, nor where what it reads is damaged.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:liblaszip\n";
}

namespace
{

void Must(laszip_I32 nResult)
{
    if (nResult != 0)
        throw std::runtime_error("LASzip cannot write the file");
}

void FillHeader(laszip_header_struct& header, const CLasFile& file)
{
    header.version_major = 1;
    header.version_minor = static_cast<laszip_U8>(file.nMinor);
    header.header_size = static_cast<laszip_U16>(file.GetHeaderSize());
    header.offset_to_point_data = header.header_size;
    header.point_data_format = static_cast<laszip_U8>(file.nFormat);
    header.point_data_record_length = static_cast<laszip_U16>(file.GetPntSize());
    header.number_of_point_records =
        file.bLegacyCount ? static_cast<laszip_U32>(file.vecPnts.size()) : laszip_U32{0};
    header.extended_number_of_point_records = file.vecPnts.size();
    header.x_scale_factor = file.adScale[0];
    header.y_scale_factor = file.adScale[1];
    header.z_scale_factor = file.adScale[2];
    header.x_offset = file.adOffset[0];
    header.y_offset = file.adOffset[1];
    header.z_offset = file.adOffset[2];
}

/// Scattered, so that a code of it is about as long as it itself.
void FillScan(laszip_point_struct& pnt, std::size_t i)
{
    const auto n = static_cast<std::uint32_t>(i + 1) * 2654435761U;
    pnt.intensity = static_cast<laszip_U16>(n >> 16U);
    pnt.gps_time = 1e9 / static_cast<double>(n);
    pnt.user_data = static_cast<laszip_U8>(n >> 9U);
    pnt.point_source_ID = static_cast<laszip_U16>(n >> 7U);
    pnt.extended_scan_angle = static_cast<laszip_I16>(n % 20000U);
    pnt.extended_classification = static_cast<laszip_U8>(n >> 20U);
    pnt.extended_classification_flags =
        static_cast<laszip_U8>((n >> 11U) & 8U); // LASzip wants the others twice
    pnt.extended_scanner_channel = static_cast<laszip_U8>((n >> 5U) & 3U);
    pnt.extended_number_of_returns = static_cast<laszip_U8>((n >> 13U) & 15U);
    pnt.extended_return_number = static_cast<laszip_U8>((n >> 18U) & 15U);
    pnt.rgb[3] = static_cast<laszip_U16>(n >> 8U);
    for (std::size_t k = 0; k < sizeof pnt.wave_packet; ++k)
        pnt.wave_packet[k] = static_cast<laszip_U8>(n >> (k % 24U));
}

void FillAttributes(laszip_point_struct& point, const CLasPnt& pnt, bool bLater)
{
    point.intensity = pnt.nIntensity;
    point.synthetic_flag = static_cast<laszip_U8>(pnt.nFlags & 1U);
    point.keypoint_flag = static_cast<laszip_U8>(pnt.nFlags >> 1U & 1U);
    point.withheld_flag = static_cast<laszip_U8>(pnt.nFlags >> 2U & 1U);
    if (bLater)
    {
        point.extended_point_type = 1;
        point.extended_return_number = static_cast<laszip_U8>(pnt.nReturn & 15U);
        point.extended_classification = pnt.nClass;
        point.extended_classification_flags = static_cast<laszip_U8>(pnt.nFlags & 15U);
        return;
    }
    point.return_number = static_cast<laszip_U8>(pnt.nReturn & 7U);
    point.classification = static_cast<laszip_U8>(pnt.nClass & 31U);
}

} // namespace

std::string LazBytes(const CLasFile& file, unsigned nChunkSize, bool bScan)
{
    std::ostringstream stream(std::ios::binary);
    laszip_POINTER pLaszip = nullptr;
    laszip_header_struct* pHeader = nullptr;
    laszip_point_struct* pPoint = nullptr;
    Must(laszip_create(&pLaszip));
    Must(laszip_get_header_pointer(pLaszip, &pHeader));
    FillHeader(*pHeader, file);
    if (file.nFormat >= 6)
        Must(laszip_request_native_extension(pLaszip, 1));
    Must(laszip_set_chunk_size(pLaszip, nChunkSize));
    Must(laszip_open_writer_stream(pLaszip, stream, 1, 0));
    Must(laszip_get_point_pointer(pLaszip, &pPoint));
    std::size_t nNumWritten = 0;
    for (const CLasPnt& pnt : file.vecPnts)
    {
        if (bScan)
            FillScan(*pPoint, nNumWritten++);
        else
            FillAttributes(*pPoint, pnt, file.nFormat >= 6);
        pPoint->X = pnt.x;
        pPoint->Y = pnt.y;
        pPoint->Z = pnt.z;
        for (std::size_t i = 0; i < pnt.anColor.size(); ++i)
            pPoint->rgb[i] = pnt.anColor[i];
        Must(laszip_write_point(pLaszip));
    }
    Must(laszip_close_writer(pLaszip));
    Must(laszip_destroy(pLaszip));
    return stream.str();
}
