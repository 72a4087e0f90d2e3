#include <formats/CLasLeftOut.h>

#include <laszip/laszip_api.h>

#include <algorithm>

void CLasLeftOut::Add(const laszip_point& pnt)
{
    const auto count = [this](enumField eField, bool bGiven) { m_anNum[eField] += bGiven ? 1 : 0; };
    // Formats from 6 on have fields of their own, of which LASzip fills some of the former ones too.
    count(Field_Intensity, pnt.intensity != 0);
    count(Field_Class, (pnt.classification | pnt.extended_classification) != 0);
    count(Field_Return, (pnt.return_number | pnt.number_of_returns | pnt.extended_return_number |
                         pnt.extended_number_of_returns) != 0);
    count(Field_Time, pnt.gps_time != 0.0);
    count(Field_ScanAngle, (pnt.scan_angle_rank | pnt.extended_scan_angle) != 0);
    count(Field_UserData, pnt.user_data != 0);
    count(Field_SourceId, pnt.point_source_ID != 0);
    count(Field_Flags, (pnt.synthetic_flag | pnt.keypoint_flag | pnt.withheld_flag | pnt.scan_direction_flag |
                        pnt.edge_of_flight_line | pnt.extended_classification_flags) != 0);
    count(Field_Channel, pnt.extended_scanner_channel != 0);
    count(Field_Infrared, pnt.rgb[3] != 0);
    count(Field_Waveform, pnt.wave_packet[0] != 0);
    if (pnt.num_extra_bytes > 0 && pnt.extra_bytes != nullptr)
        count(Field_ExtraBytes, std::any_of(pnt.extra_bytes, pnt.extra_bytes + pnt.num_extra_bytes,
                                            [](laszip_U8 n) { return n != 0; }));
}

std::vector<CLeftOut> CLasLeftOut::List(bool bInfrared, bool bWaveforms) const
{
    constexpr std::array<const char*, Field_Count> c_names = {
        "intensity",  "classes", "return numbers",   "times",         "scan angles", "user data",
        "source IDs", "flags",   "scanner channels", "near infrared", "waveforms",   "extra bytes"};
    std::vector<CLeftOut> vecLeftOut;
    for (std::size_t i = 0; i < c_names.size(); ++i)
    {
        const bool bHas = (i != Field_Infrared || bInfrared) && (i != Field_Waveform || bWaveforms);
        if (bHas && m_anNum[i] > 0)
            vecLeftOut.push_back({c_names[i], m_anNum[i]});
    }
    return vecLeftOut;
}
