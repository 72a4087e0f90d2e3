#include <tests/host/support/CZorcld.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace
{

std::string Quote(const std::string& sText)
{
    std::string sQuoted = "'";
    for (const char c : sText)
        sQuoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return sQuoted + "'";
}

} // namespace

bool CRun::HasOneErrLine() const
{
    return !sErr.empty() && sErr.back() == '\n' && std::count(sErr.begin(), sErr.end(), '\n') == 1;
}

CZorcld::CZorcld() : CZorcld(fs::temp_directory_path()) {}

CZorcld::CZorcld(InMemory)
    : CZorcld(access("/dev/shm", W_OK) == 0 ? fs::path("/dev/shm") : fs::temp_directory_path())
{
}

CZorcld::CZorcld(const fs::path& place)
{
    std::string sFolder = (place / "zorcld_XXXXXX").string();
    if (mkdtemp(sFolder.data()) == nullptr)
        throw std::runtime_error("no temporary folder");
    m_folder = sFolder;
}

CZorcld::~CZorcld()
{
    std::error_code error;
    fs::remove_all(m_folder, error);
    fs::remove(m_folder.string() + ".out", error);
    fs::remove(m_folder.string() + ".err", error);
}

bool CZorcld::IsSanitized()
{
    return ZORCLD_SANITIZED;
}

CRun CZorcld::Run(const std::vector<std::string>& vecArgs, long nMaxKib) const
{
    return RunAfter(nMaxKib > 0 ? "ulimit -v " + std::to_string(nMaxKib) + ";" : "", vecArgs);
}

CRun CZorcld::RunAfter(const std::string& sBefore, const std::vector<std::string>& vecArgs) const
{
    const std::string sOut = m_folder.string() + ".out";
    const std::string sErr = m_folder.string() + ".err";
    // The font library keeps some of its memory to the end, LASzip where a file is damaged: no leaks of ours.
    std::string sCommand = sBefore + " env LSAN_OPTIONS=$LSAN_OPTIONS:print_suppressions=0:suppressions=" +
                           Quote(ZORCLD_SUPPRESSIONS) + ' ' + Quote(ZORCLD_PATH);
    for (const std::string& sArg : vecArgs)
        sCommand += ' ' + Quote(sArg);
    sCommand = "{ " + sCommand + "; } </dev/null >" + Quote(sOut) + " 2>" + Quote(sErr);
    const int nStatus = std::system(sCommand.c_str());
    return {WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -1, ReadBytes(sOut), ReadBytes(sErr)};
}

std::string CZorcld::GetProgram()
{
    return ZORCLD_PATH;
}

bool CZorcld::HasLas()
{
    return ZORCLD_HAS_LAS != 0;
}

bool CZorcld::HasLaszip()
{
    return ZORCLD_HAS_LASZIP != 0;
}

std::string CZorcld::GetPath(const std::string& sName) const
{
    return (m_folder / sName).string();
}

std::string CZorcld::Write(const std::string& sName, const std::string& sBytes) const
{
    std::ofstream(GetPath(sName), std::ios::binary) << sBytes;
    return GetPath(sName);
}

std::size_t CZorcld::CountFiles() const
{
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(m_folder), fs::directory_iterator()));
}

std::string ReadBytes(const std::string& sPath)
{
    std::ifstream file(sPath, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string PackFloats(const std::vector<float>& vecValues)
{
    std::string sBytes;
    for (const float f : vecValues)
    {
        std::uint32_t nBits = 0;
        std::memcpy(&nBits, &f, sizeof(nBits));
        for (unsigned int k = 0; k < 4; ++k)
            sBytes += static_cast<char>(nBits >> (8U * k));
    }
    return sBytes;
}

std::string MakePlyHeader(const std::string& sLines)
{
    return "ply\nformat binary_little_endian 1.0\n" + sLines + "end_header\n";
}

std::string MakePly(const std::vector<float>& vecCoords)
{
    return MakePlyHeader("element vertex " + std::to_string(vecCoords.size() / 3) +
                         "\nproperty float x\nproperty float y\nproperty float z\n") +
           PackFloats(vecCoords);
}

std::string MakeGridPly(int nSide)
{
    std::string sBytes =
        MakePlyHeader("element vertex " + std::to_string(nSide * nSide) +
                      "\nproperty float x\nproperty float y\nproperty float z\nproperty uchar red\n"
                      "property uchar green\nproperty uchar blue\n");
    for (int i = 0; i < nSide; ++i)
        for (int k = 0; k < nSide; ++k)
            sBytes += PackFloats({static_cast<float>(i), static_cast<float>(k), static_cast<float>(i + k)}) +
                      "\xC8\x64\x32";
    return sBytes;
}
