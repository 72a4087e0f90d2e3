#ifndef TESTS_HOST_SUPPORT_CZORCLD_H
#define TESTS_HOST_SUPPORT_CZORCLD_H

#include <filesystem>
#include <string>
#include <vector>

/// What one run of the program left.
struct CRun
{
    int nStatus = -1; ///< exit status; -1: it did not end by itself
    std::string sOut;
    std::string sErr;

    /// Did it say exactly one line on standard error?
    bool HasOneErrLine() const;
};

/// Runs the real program in a folder of its own, which goes away with this object.
class CZorcld
{
public:
    struct InMemory
    {
    };

    CZorcld();

    /// The folder lies in memory where the system has room there: for thousands of results that nobody reads.
    explicit CZorcld(InMemory);
    ~CZorcld();
    CZorcld(const CZorcld&) = delete;
    CZorcld& operator=(const CZorcld&) = delete;

    /// @param nMaxKib  address space that the run may take, KiB; 0: as much as it wants.
    CRun Run(const std::vector<std::string>& vecArgs, long nMaxKib = 0) const;

    /// @param sBefore  what the shell gets before the command: "ulimit -f 100;" or "timeout 1".
    CRun RunAfter(const std::string& sBefore, const std::vector<std::string>& vecArgs) const;

    /// Is the program built with sanitizers?
    static bool IsSanitized();

    /// Its path.
    static std::string GetProgram();

    /// Does it read LAS?
    static bool HasLas();

    /// Does it read the points of LAS and LAZ itself, through LASzip?
    static bool HasLaszip();

    /// Path of a file in the folder.
    std::string GetPath(const std::string& sName) const;

    /// Writes a file into the folder. @return its path.
    std::string Write(const std::string& sName, const std::string& sBytes) const;

    /// Number of files in the folder: nothing temporary may stay.
    std::size_t CountFiles() const;

private:
    explicit CZorcld(const std::filesystem::path& place);

    std::filesystem::path m_folder;
};

/// All bytes of a file; empty when there is none.
std::string ReadBytes(const std::string& sPath);

/// Little-endian bytes of floats, one after the other.
std::string PackFloats(const std::vector<float>& vecValues);

/// A header of a binary little-endian PLY: the lines are put between format and end_header.
std::string MakePlyHeader(const std::string& sLines);

/// A whole PLY of points without colour, three values a point.
std::string MakePly(const std::vector<float>& vecCoords);

/// A whole PLY of points on a grid of unit steps, nSide × nSide, at rising heights, all in one colour.
std::string MakeGridPly(int nSide);

#endif
