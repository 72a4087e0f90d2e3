#ifndef FORMATS_LASHEADER_H
#define FORMATS_LASHEADER_H

#include <array>
#include <cstdint>
#include <string>
#include <vector>

/// A record of variable length that stands between the header and the points.
struct CLasRecord
{
    std::string sUser; ///< who defined it
    std::uint16_t nId = 0;
    std::uint16_t nSize = 0; ///< bytes of its data
    std::string sDescription;
};

/// What the header of a LAS or LAZ file says, without judging whether it is true. Axes are x, y, z.
struct CLasHeader
{
    std::int64_t nFileSize = 0;
    int nMajor = 0;
    int nMinor = 0;
    std::string sSystem;   ///< the scanner, or the operation that made the file
    std::string sSoftware; ///< that wrote the file
    int nDay = 0;          ///< of creation, from 1 to 366; 0: not given
    int nYear = 0;         ///< of creation; 0: not given
    int nHeaderSize = 0;
    std::int64_t nPosPnts = 0;                ///< where the points begin
    int nFormat = 0;                          ///< of the points, 0 to 10, without the marks of compression
    bool bCompressed = false;                 ///< LAZ
    int nPntSize = 0;                         ///< bytes of a point that is not compressed
    std::int64_t nNumLegacy = 0;              ///< the count of 32 bits
    std::int64_t nNumPnts = 0;                ///< the count that holds: that of 64 bits where the other is 0
    std::vector<std::int64_t> vecNumByReturn; ///< of 1st, 2nd returns and so on: 5, from LAS 1.4 on 15
    std::array<double, 3> adScale{};
    std::array<double, 3> adOffset{};
    std::array<double, 3> adFirst{}; ///< x, y, z of the first point; without points they mean nothing
    std::array<double, 3> adMin{};
    std::array<double, 3> adMax{};
    std::uint32_t nNumRecords = 0;        ///< that the header announces
    std::vector<CLasRecord> vecRecords;   ///< those that are there, at most c_nMaxRecords
    std::int64_t nNumExtendedRecords = 0; ///< behind the points, from LAS 1.4 on
    int nCompressor = 0;                  ///< of LAZ: 1 one stream, 2 chunks, 3 chunks in layers; 0: not said
    std::int64_t nPosTable = 0;           ///< of chunks: where their table stands

    static constexpr std::size_t c_nMaxRecords = 1000;

    /// @return whether the points have colours, and whether the library takes them.
    bool HasColor() const
    {
        return nFormat == 2 || nFormat == 3 || nFormat == 5 || nFormat == 7 || nFormat == 8 || nFormat == 10;
    }
    bool IsColorTaken() const { return nFormat == 2 || nFormat == 3 || nFormat == 5; }

    /// @return points that the file has room for; -1 of a compressed file, whose size does not tell.
    std::int64_t CalcNumHeld() const;

    /// @return the day of creation as "2024-02-01"; as much as is given, empty when nothing is.
    std::string GetDate() const;
};

/// Reads the header.
///
/// @param header  what could be read, also when something is wrong.
/// @return why the file cannot be read as LAS, without a full stop; empty: nothing found.
std::string ReadLasHeader(const std::string& sPath, CLasHeader& header);

#endif
