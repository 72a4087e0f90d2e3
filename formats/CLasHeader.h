#ifndef FORMATS_CLASHEADER_H
#define FORMATS_CLASHEADER_H

#include <formats/CFileCause.h>
#include <formats/LasLayout.h>

#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

class CSizedFile;

/// What the public header block of a LAS or LAZ file says. Fill it with `Read`, then ask.
///
/// Its members are the file's own words: whether they are true, and whether the library takes the file,
/// CLasGuard tells. Axes are x, y, z.
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
    std::uint32_t nNumRecords = 0;            ///< of variable length, between header and points, at most
    int nFormat = 0;                          ///< of the points, 0 to 10, without the marks of compression
    bool bCompressed = false;                 ///< LAZ
    std::uint16_t nPntSize = 0;               ///< bytes of a point, see CalcPntSize
    std::int64_t nNumLegacy = 0;              ///< the count of 32 bits
    std::int64_t nNumPnts = 0;                ///< the count that holds: that of 64 bits where the other is 0
    std::int64_t nPosWaveforms = 0;           ///< behind the points; 0: none
    std::vector<std::int64_t> vecNumByReturn; ///< of 1st, 2nd returns and so on: 5, from LAS 1.4 on 15
    bool bWkt = false;                        ///< the coordinate system is stated as well-known text
    std::int64_t nPosLater = 0;               ///< of the records behind the points, from LAS 1.4 on
    std::uint32_t nNumLater = 0;              ///< their number
    std::array<double, 3> adScale{};
    std::array<double, 3> adOffset{};
    std::array<double, 3> adMin{};
    std::array<double, 3> adMax{};

    /// Reads the header. What could be read stays also when something is wrong with it.
    ///
    /// @return why the library does not take the file, as far as the header tells.
    CFileCause Read(CSizedFile& file);

    /// @return whether the points have colours, and whether the library takes them.
    bool HasColor() const { return LasLayout::HasColor(static_cast<unsigned>(nFormat)); }
    bool IsColorTaken() const { return LasLayout::IsColorTaken(static_cast<unsigned>(nFormat)); }

    /// @return bytes of a point that is not compressed: where the header says fewer than its format
    ///         has, those of the format, with which the reading library goes on.
    int CalcPntSize() const;

    /// @return points that the file has room for; -1 of a compressed file, whose size does not tell.
    std::int64_t CalcNumHeld() const;

    /// Counts of headers are often too low, above all where a file was not finished. What lies behind the
    /// announced points counts as points where it is a whole number of them, or where none are announced.
    ///
    /// @return where the points end at the latest: where something else that the header names begins behind
    ///         them, else the file's size.
    std::int64_t FindPosEnd() const;

    /// @return the count that holds, as far as it is a number of this type: a count of 2^63 and more is the
    ///         largest one.
    std::int64_t GetNumAnnounced() const noexcept
    {
        return nNumPnts < 0 ? std::numeric_limits<std::int64_t>::max() : nNumPnts;
    }

    /// @return points that stand before what else the file has; -1 of a compressed file.
    std::int64_t CalcNumThere() const;

    /// @return the day of creation as "2024-02-01"; as much as is given, empty when nothing is.
    std::string GetDate() const;

private:
    void TakeFacts(const unsigned char* pBytes);
    void TakeLaterCounts(const unsigned char* pBytes);
    int CalcMinHeaderSize(int nMinorOfSize) const;
    CFileCause FindWrongPlace() const;
    CFileCause FindWrongLayout() const;
};

#endif
