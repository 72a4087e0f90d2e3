#ifndef FORMATS_CPLYWALK_H
#define FORMATS_CPLYWALK_H

#include <formats/CPlyHeader.h>

#include <cstdint>
#include <string>
#include <string_view>

/// Steps over the data of a PLY file as the library reads them, to find whether they are all there. Only the
/// counts of lists are looked at. They may come along while others read the file: each block of it is
/// offered, and what is missed is read afterwards.
class CPlyWalk
{
public:
    /// Steps up to the first list. @param header  outlives the walk.
    CPlyWalk(const CPlyHeader& header, std::int64_t nFileSize);

    /// @return the place of the count that is wanted next; below 0: none, the walk is done.
    std::int64_t GetPosWanted() const { return m_bDone ? -1 : m_nPos; }

    /// Looks at the counts in a block of the file that stands at `nPosBlock`.
    void Take(std::int64_t nPosBlock, std::string_view sBlock);

    /// @return the first that is wrong with the file, as far as found; a refusal where the library does not
    ///         read it to its end.
    CFileCause GetCause() const { return {m_bRefused ? m_cause.eCause : FileCause_None, m_cause.sText}; }

private:
    void Advance();
    bool AdvanceItems(const CPlyElement& element);
    bool AdvanceLists(const CPlyElement& element);
    const CPlyElement& GetElement() const { return m_header.GetElements()[m_nElem]; }
    void NoteCutOff();
    void Note(const CFileCause& cause);
    void Refuse();

    const CPlyHeader& m_header;
    std::int64_t m_nFileSize;
    std::int64_t m_nPos;
    std::size_t m_nElem = 0;
    std::int64_t m_nItem = 0; // of the element
    std::size_t m_nProp = 0;  // of the item
    bool m_bDone = false;
    CFileCause m_cause; // with its number, refused or not
    bool m_bRefused = false;
};

#endif
