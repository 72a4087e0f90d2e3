#ifndef FORMATS_CLASZIPREADER_H
#define FORMATS_CLASZIPREADER_H

#include <formats/CLazFile.h>

#include <cstdint>

class CLasGuard;
struct laszip_point;

/// LASzip with one file open, before its first point. It prints nothing.
///
/// Where memory runs out within LASzip, what it has made by halves is left alone, since LASzip dies of taking
/// it apart: that memory is lost.
class CLaszipReader
{
public:
    /// What is decompressed of a point of formats 6 to 10. Of the others it is always everything.
    enum enumParts
    {
        Parts_AllButTimes, ///< of damaged times LASzip calls itself without end, in memory, where no stream
                           ///< ends it
        Parts_Coords       ///< what else a point has is that of some point before it
    };

    /// @param guard  of the file, which it has let through; kept, not owned. Nobody else may move the file's
    ///               position while this object is used.
    CLaszipReader(CLasGuard& guard, enumParts eParts);
    ~CLaszipReader();

    CLaszipReader(const CLaszipReader&) = delete;
    CLaszipReader& operator=(const CLaszipReader&) = delete;

    bool IsOpen() const noexcept { return m_pPnt != nullptr; }

    /// How far LASzip has taken the file.
    std::int64_t GetPos() const noexcept { return m_file.GetPos(); }

    /// @return the next point, until the next call; null where the points end or cannot be decoded, or what
    ///         has been decoded is not all of it the code of points. It is not to be called for more points
    ///         than the guard's GetMaxNumPnts. REQUIRES: IsOpen.
    const laszip_point* Read();

private:
    bool Open();
    bool EnterChunk();
    bool IsBehindPnts() const noexcept;
    bool TellFailure();

    CLasGuard& m_guard;
    CLazFile m_file;
    void* m_pLaszip = nullptr;
    laszip_point* m_pPnt = nullptr;
    std::size_t m_nNumChunks = 0; // that have been entered
    std::int64_t m_nLeftInChunk = 0;
};

#endif
