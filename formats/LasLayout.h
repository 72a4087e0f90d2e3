#ifndef FORMATS_LASLAYOUT_H
#define FORMATS_LASLAYOUT_H

#include <formats/LittleEndian.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

/// A number of a LAS file: its type, and where it stands in the part of the file that it belongs to.
template <class Number>
struct CLasField
{
    std::size_t nPos;
};

/// A text of a LAS file, which may end before its place does, with a zero or with blanks.
struct CLasTextField
{
    std::size_t nPos;
    std::size_t nSize;
};

/// A format of points: how many bytes a point has at least and what stands where in it.
struct CLasFormat
{
    std::uint16_t nPntSize;
    std::uint16_t nPosColor; ///< of three 16-bit channels: red, green, blue; 0: the format has no colours
};

/// A part of a point as LAZ compresses it, by its type.
struct CLazItemType
{
    std::uint16_t nSize;       ///< bytes; 0: any number
    std::uint16_t nMaxVersion; ///< 0: no such type
    std::uint16_t nNumLayers;  ///< of a chunk in layers; 0: as many as bytes
};

/// What LAS and LAZ files look like. Positions and sizes are in bytes.
namespace LasLayout
{

constexpr std::array<char, 4> c_acMagic = {'L', 'A', 'S', 'F'};

/// Fields of the public header block, counted from the start of the file.
constexpr CLasField<std::uint16_t> c_nEncoding{6};
constexpr CLasField<std::uint8_t> c_nMajor{24};
constexpr CLasField<std::uint8_t> c_nMinor{25};
constexpr CLasTextField c_sSystem{26, 32};
constexpr CLasTextField c_sSoftware{58, 32};
constexpr CLasField<std::uint16_t> c_nDay{90};
constexpr CLasField<std::uint16_t> c_nYear{92};
constexpr CLasField<std::uint16_t> c_nHeaderSize{94};
constexpr CLasField<std::uint32_t> c_nPosPnts{96};
constexpr CLasField<std::uint32_t> c_nNumRecords{100};
constexpr CLasField<std::uint8_t> c_nFormat{104};
constexpr CLasField<std::uint16_t> c_nPntSize{105};
constexpr CLasField<std::uint32_t> c_nNumLegacy{107};
constexpr CLasField<std::uint32_t> c_nNumByReturnLegacy{111}; ///< the first of c_nNumReturnsLegacy
constexpr CLasField<double> c_dScale{131};                    ///< x; y and z follow
constexpr CLasField<double> c_dOffset{155};                   ///< x; y and z follow
constexpr CLasField<double> c_dMax{179};                      ///< x; then the least x, and so y and z
constexpr CLasField<double> c_dMin{187};
constexpr CLasField<std::int64_t> c_nPosWaveforms{227}; ///< from LAS 1.3 on; 0: none in this file
constexpr CLasField<std::int64_t> c_nPosLater{235};     ///< of the records behind the points, from LAS 1.4 on
constexpr CLasField<std::uint32_t> c_nNumLater{243};    ///< their number
constexpr CLasField<std::int64_t> c_nNumPnts{247};      ///< from LAS 1.4 on
constexpr CLasField<std::int64_t> c_nNumByReturn{255};  ///< the first of c_nNumReturns

constexpr std::size_t c_nNumReturnsLegacy = 5;
constexpr std::size_t c_nNumReturns = 15;

/// Bytes of the header at least, by minor version from 1.0 on; later versions as the last.
constexpr std::array<std::uint16_t, 5> c_anHeaderSize = {227, 227, 227, 235, 375};
constexpr std::size_t c_nMinHeaderSize = c_anHeaderSize.front();
constexpr std::size_t c_nMaxHeaderSize = c_anHeaderSize.back(); ///< behind it nothing is known

/// The major version of all that is known here.
constexpr int c_nMajorKnown = 1;

/// The first minor versions that have the position of waveforms, and the later counts and records.
constexpr int c_nMinorOfWaveforms = 3;
constexpr int c_nMinorOfLaterCounts = 4;

/// The highest bits of the format in the header mark a compressed file.
constexpr unsigned c_nFormatMask = 0x3F;

/// By format. No other place has the sizes of points.
constexpr std::array<CLasFormat, 11> c_aFormats = {{{20, 0},
                                                    {28, 0},
                                                    {26, 20},
                                                    {34, 28},
                                                    {57, 0},
                                                    {63, 28},
                                                    {30, 0},
                                                    {36, 30},
                                                    {38, 30},
                                                    {59, 0},
                                                    {67, 30}}};

/// From this format on returns, flags and classes take more bits.
constexpr int c_nFirstLaterFormat = 6;

/// x, y and z, each of 32 bits, begin a point of every format.
constexpr CLasField<std::int32_t> c_nCoord{0};

/// A record of variable length: a head of so many bytes, then its data.
constexpr std::int64_t c_nRecordHeadSize = 54;
constexpr CLasTextField c_sRecordUser{2, 16};
constexpr CLasField<std::uint16_t> c_nRecordId{18};
constexpr CLasField<std::uint16_t> c_nRecordSize{20};
constexpr CLasTextField c_sRecordDescription{22, 32};

/// A record behind the points has a longer head; whose it is and which stands where it does in the other.
constexpr std::int64_t c_nLaterHeadSize = 60;
constexpr CLasField<std::int64_t> c_nLaterSize{20};

/// Whose records state the coordinate system, and which they are: the one as well-known text, which the mark
/// in the encoding says, or the other as keys in three records: numbers, real numbers and texts.
constexpr char c_acProjection[] = "LASF_Projection";
constexpr std::uint16_t c_nWktId = 2112;
constexpr std::uint16_t c_nGeoKeysId = 34735;
constexpr std::uint16_t c_nGeoDoublesId = 34736;
constexpr std::uint16_t c_nGeoTextsId = 34737;
constexpr unsigned c_nWktMark = 16;

/// Whose record says how the points are compressed.
constexpr char c_acCompressor[] = "laszip encoded";
constexpr std::uint16_t c_nCompressorId = 22204;

/// The data of that record: so many bytes, then the items, each a type, a size and a version.
constexpr std::size_t c_nCompressorSize = 34;
constexpr CLasField<std::uint16_t> c_nCompressor{0};
constexpr CLasField<std::uint16_t> c_nCoder{2}; ///< 0: there is one only
constexpr CLasField<std::uint32_t> c_nChunkSize{12};
constexpr CLasField<std::uint16_t> c_nNumItems{32};

/// How points are compressed: in one stream, in chunks, or in chunks in which every part of a point has
/// streams of its own.
constexpr std::uint16_t c_nOneStream = 1;
constexpr std::uint16_t c_nChunked = 2;
constexpr std::uint16_t c_nLayered = 3;

/// The position of the table of chunks stands before the first chunk.
constexpr std::int64_t c_nTablePosSize = 8;

/// The parts of points that are in layers have types from this one on.
constexpr std::uint16_t c_nFirstLayeredItem = 10;
constexpr std::array<CLazItemType, 15> c_aItemTypes = {{
    {0, 2, 0},  // bytes of the user's own
    {0, 0, 0},  // of 1 to 5 no file is known
    {0, 0, 0},  //
    {0, 0, 0},  //
    {0, 0, 0},  //
    {0, 0, 0},  //
    {20, 2, 0}, // coordinates and what every format up to 5 has
    {8, 2, 0},  // time
    {6, 2, 0},  // colour
    {29, 1, 0}, // waveform
    {30, 4, 9}, // coordinates and what every format from 6 on has
    {6, 4, 1},  // colour
    {8, 4, 2},  // colour and infrared
    {29, 4, 1}, // waveform
    {0, 4, 0},  // bytes of the user's own
}};

/// @param nFormat  without the marks of compression.
/// @return whether the points of a format have colours.
constexpr bool HasColor(unsigned nFormat) noexcept
{
    return nFormat < c_aFormats.size() && c_aFormats[nFormat].nPosColor != 0;
}

/// @param nFormat  without the marks of compression.
/// @return whether the points of a format have near infrared, behind their colours.
constexpr bool HasInfrared(unsigned nFormat) noexcept
{
    return nFormat == 8 || nFormat == 10;
}

/// @param nFormat  without the marks of compression.
/// @return whether the points of a format have waveforms.
constexpr bool HasWaveforms(unsigned nFormat) noexcept
{
    return nFormat == 4 || nFormat == 5 || nFormat == 9 || nFormat == 10;
}

/// @param nFormat  without the marks of compression.
/// @return whether the library takes the colours of a format.
/// KEPT: formats 7, 8 and 10 have colours too, and are taken without
/// (IsColorTaken_LaterFormatsAreNot_Kept, Read_LaterFormatsWithoutTheirColor_Kept).
constexpr bool IsColorTaken(unsigned nFormat) noexcept
{
    return nFormat == 2 || nFormat == 3 || nFormat == 5;
}

/// The number of a field that begins `nIndex` numbers behind `field`, in `pBytes`.
template <class Number>
inline Number Get(const unsigned char* pBytes, CLasField<Number> field, std::size_t nIndex = 0) noexcept
{
    return LittleEndian::Get<Number>(pBytes + field.nPos + nIndex * sizeof(Number));
}

/// The text of a field in `pBytes`: up to a zero, without blanks at its end; what cannot be printed as '?'.
std::string GetText(const unsigned char* pBytes, CLasTextField field);

} // namespace LasLayout

#endif
