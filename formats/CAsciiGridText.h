#ifndef FORMATS_CASCIIGRIDTEXT_H
#define FORMATS_CASCIIGRIDTEXT_H

#include <zor0lang/IsWhiteSpace.h>

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>

/// The text of a grid file, block by block: lines, and in a line its tokens.
///
/// A line is trimmed, its first token reaches to the first space, what follows is trimmed in turn. So a
/// token starts at the next character that is no white space and ends at a space or the end of the line;
/// a tab inside it does not end it. White space at the end of a token has no influence on its number.
class CAsciiGridText
{
public:
    /// @param pFile  an unbuffered stream at the start of the text; not null, not owned.
    explicit CAsciiGridText(std::FILE* pFile);

    /// Takes the next line, empty or not, without its line feed. @return false at the end of the file.
    bool GetLine(std::string& sLine);

    /// Moves to the next line that is not empty: a line of a carriage return alone is, one of blanks is not.
    /// REQUIRES: the start of a line.
    /// @return false at the end of the file.
    bool FindLine();

    /// Moves to the next token of the line. @return false, at its line feed, when there is none.
    bool FindToken();

    /// Takes the number at the start of the token: exactly what zor::DoubleDaString makes of the token.
    /// REQUIRES: FindToken().
    double GetNumber();

    /// Moves behind the line feed that ends the line.
    void SkipLine();

private:
    bool Fill();
    bool ReadBlock();
    bool IsAtEnd() { return m_pPos == m_pWhole && !Fill(); }
    double GetAnyNumber();

    std::FILE* m_pFile;
    bool m_bFileEnded = false;
    std::string m_sToken; // kept for its memory

    // From m_pPos to m_pWhole every token is whole: the last character is a space or a line feed. From
    // there to m_pEnd lies the start of one that the end of the block cuts.
    std::size_t m_nBlockSize;
    std::unique_ptr<char[]> m_pBlock;
    const char* m_pPos;
    const char* m_pWhole;
    const char* m_pEnd;
};

inline bool CAsciiGridText::FindToken()
{
    // A file ends in a line feed, its own or one added to it: a line never runs out of characters.
    for (; !IsAtEnd(); ++m_pPos)
    {
        if (*m_pPos == '\n')
            return false;
        if (!zor::IsWhiteSpace(*m_pPos))
            return true;
    }
    return false;
}

#endif
