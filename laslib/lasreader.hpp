#ifndef LAS_READER_HPP
#define LAS_READER_HPP

#include <cstdint>
#include <memory>
#include <string>

// Stands in for LASlib's header of this name where LASlib is not installed: its names, and of its members
// those that the library's reader uses, on top of LASzip.

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

/// The point read last. It has no values of its own: it looks at LASzip's.
class LASpoint
{
public:
    I32 get_X() const noexcept { return m_pXyz[0]; }
    I32 get_Y() const noexcept { return m_pXyz[1]; }
    I32 get_Z() const noexcept { return m_pXyz[2]; }

    const LASquantizer* quantizer = nullptr;
    const U16* rgb = nullptr; ///< red, green and blue; only a format with colour sets them

private:
    friend class LASreader;

    const I32* m_pXyz = nullptr;
};

/// Reads the points of one file, from the first to the last. It prints nothing.
class LASreader
{
public:
    LASreader() = default;
    ~LASreader();

    LASreader(const LASreader&) = delete;
    LASreader& operator=(const LASreader&) = delete;

    /// Reads the next point into `point`.
    /// @return FALSE behind the last point that the header announces, and where the data end or cannot be
    ///         decoded.
    BOOL read_point();

    /// Closes the file; `read_point` then gives no more points.
    void close(BOOL close_stream = TRUE);

    LASheader header;
    I64 npoints = 0; ///< number of points that the header announces
    LASpoint point;

private:
    friend class LASreadOpener;

    bool Open(const CHAR* file_name);

    void* m_pLaszip = nullptr;
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
