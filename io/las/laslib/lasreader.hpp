#ifndef LAS_READER_HPP
#define LAS_READER_HPP

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

// Stands in for LASlib's header of this name where LASlib is not installed: its names, and of its members
// those that the library's reader uses, on top of LASzip.

class CLasGuard;
class CLaszipReader;

using CHAR = char;
using BOOL = int;
using U8 = std::uint8_t;
using U16 = std::uint16_t;
using I32 = std::int32_t;
using I64 = std::int64_t;
using F64 = double;

#ifndef FALSE
#define FALSE 0
#endif
#ifndef TRUE
#define TRUE 1
#endif

/// How integer coordinates become coordinates: times scale factor, plus offset.
class LASquantizer
{
public:
    F64 x_scale_factor = 1.0;
    F64 y_scale_factor = 1.0;
    F64 z_scale_factor = 1.0;
    F64 x_offset = 0.0;
    F64 y_offset = 0.0;
    F64 z_offset = 0.0;
};

class LASheader : public LASquantizer
{
public:
    U8 point_data_format = 0; ///< 0 to 10, without the bits that mark a compressed file
};

/// The colour of a point: channels red, green and blue.
class LASrgb
{
public:
    U16 operator[](int nChannel) const noexcept
    {
        U16 n = 0;
        std::memcpy(&n, m_pBytes + 2 * nChannel, sizeof n);
        return n;
    }

private:
    friend class LASreader;

    const unsigned char* m_pBytes = nullptr;
};

/// The point read last. It has no values of its own: it looks at the bytes where they were read to.
class LASpoint
{
public:
    I32 get_X() const noexcept { return GetCoord(0); }
    I32 get_Y() const noexcept { return GetCoord(1); }
    I32 get_Z() const noexcept { return GetCoord(2); }

    const LASquantizer* quantizer = nullptr;
    LASrgb rgb; ///< only of a format with colour

private:
    friend class LASreader;

    I32 GetCoord(int nAxis) const noexcept
    {
        I32 n = 0;
        std::memcpy(&n, m_pBytes + 4 * nAxis, sizeof n);
        return n;
    }

    const unsigned char* m_pBytes = nullptr;
};

/// Reads the points of one file, from the first to the last. It prints nothing.
///
/// Points that are not compressed are taken from blocks of the file: LASzip's reading of them, one by one,
/// costs several times as much as all that is done with them.
class LASreader
{
public:
    LASreader();
    ~LASreader();

    LASreader(const LASreader&) = delete;
    LASreader& operator=(const LASreader&) = delete;

    /// Reads the next point into `point`.
    /// @return FALSE behind the last point that the header announces, and where the data end or cannot be
    ///         decoded.
    BOOL read_point()
    {
        if (m_nNumRead >= npoints)
            return FALSE;
        if (m_pNext == m_pEnd && !ReadMore())
            return FALSE;
        point.m_pBytes = m_pNext;
        point.rgb.m_pBytes = m_pNext + m_nPosRgb;
        m_pNext += m_nPntSize;
        ++m_nNumRead;
        return TRUE;
    }

    /// Closes the file; `read_point` then gives no more points.
    void close(BOOL close_stream = TRUE);

    LASheader header;
    I64 npoints = 0; ///< number of points that the header announces
    LASpoint point;

private:
    friend class LASreadOpener;

    bool Open(const CHAR* file_name);
    bool OpenLaz();
    bool OpenBlocks();
    bool ReadMore();

    std::unique_ptr<CLasGuard> m_pGuard;
    std::unique_ptr<CLaszipReader> m_pLaszip; // of a compressed file
    std::FILE* m_pFile = nullptr;             // of any other; the guard's
    std::vector<unsigned char> m_vecBlock;
    // The points that have been read and not yet given: in the block, or none. LASzip's point is one place of
    // size 0: it is read anew each time.
    const unsigned char* m_pNext = nullptr;
    const unsigned char* m_pEnd = nullptr;
    std::size_t m_nPntSize = 0;
    std::size_t m_nPosRgb = 0; // in a point
    I64 m_nNumRead = 0;
};

/// Opens a file for reading.
class LASreadOpener
{
public:
    /// @param unique  asks for a file to be named once only; of one file it means nothing.
    void set_file_name(const CHAR* file_name, BOOL unique = FALSE);

    /// @param other_file_name  another file than the one set; null: the one set.
    /// @return a reader before its first point, which the caller closes and deletes; null when the file is
    ///         missing or cannot be read.
    LASreader* open(const CHAR* other_file_name = nullptr);

private:
    std::string m_sFileName;
};

#endif
