#ifndef FORMATS_CPLYLINES_H
#define FORMATS_CPLYLINES_H

#include <cstddef>
#include <cstdint>
#include <string>

class CByteReader;

/// The lines of a PLY header, each in two forms: in pieces as the library takes them, and whole as it is
/// meant.
///
/// To the library a line ends in a line feed; carriage return and line feed make one. As it is meant, all
/// lines end as the first one does, which may be in a carriage return. Memory does not grow with a line.
class CPlyLines
{
public:
    /// @param reader  at the start of the file; kept, not owned.
    explicit CPlyLines(CByteReader& reader) : m_reader(reader) {}

    /// Reads the next piece: a line, or 511 characters of a longer one. @return false at the end of the file.
    bool ReadPiece();

    /// As the library takes it: with its line feed, and without what follows a zero byte.
    const std::string& GetPiece() const noexcept { return m_sPiece; }

    /// @return whether the piece ends a line, so that GetLine is whole.
    bool IsLineEnd() const noexcept { return m_bLineEnd; }

    /// As it is meant: without its end, and without any carriage return.
    const std::string& GetLine() const noexcept { return m_sLine; }

    /// @return whether the line is too long for a header: its rest is missing.
    bool IsTooLong() const noexcept { return m_sLine.size() >= c_nMaxLine; }

    /// Position in the file behind the piece.
    std::int64_t GetPos() const;

private:
    static constexpr std::size_t c_nMaxPiece = 511;
    static constexpr std::size_t c_nMaxLine = 4096;

    int TakeChar();

    CByteReader& m_reader;
    std::string m_sPiece;
    std::string m_sLine;
    bool m_bLineEnd = true;
    int m_cEnd = 0; // of every line; 0 up to the end of the first one
};

#endif
