#ifndef PYTHON_BIND_CMEMFILE_H
#define PYTHON_BIND_CMEMFILE_H

#include <python/bind/Gil.h>

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <string>

namespace zorpy
{

/// A file without a name, in memory: what reads and writes files by their path reaches it through GetPath.
class CMemFile
{
public:
    /// Throws as `ThrowErrno` where there is none to be had: memory or descriptors.
    CMemFile() : m_nFile(memfd_create("zor4data", MFD_CLOEXEC))
    {
        if (m_nFile < 0)
            ThrowErrno(errno);
    }
    ~CMemFile() { close(m_nFile); }
    CMemFile(const CMemFile&) = delete;
    CMemFile& operator=(const CMemFile&) = delete;

    std::string GetPath() const { return "/proc/self/fd/" + std::to_string(m_nFile); }

    std::int64_t FindSize() const
    {
        struct stat info = {};
        return fstat(m_nFile, &info) == 0 ? static_cast<std::int64_t>(info.st_size) : -1;
    }

    /// @return whether all bytes arrived; if not, errno says why.
    bool Write(const char* pBytes, std::int64_t nNumBytes)
    {
        while (nNumBytes > 0)
        {
            const ssize_t nWritten = write(m_nFile, pBytes, static_cast<std::size_t>(nNumBytes));
            if (nWritten <= 0)
                return false;
            pBytes += nWritten;
            nNumBytes -= nWritten;
        }
        return true;
    }

    /// @return whether that many bytes from the start came.
    bool Read(char* pBytes, std::int64_t nNumBytes) const
    {
        for (std::int64_t nPos = 0; nPos < nNumBytes;)
        {
            const ssize_t nRead =
                pread(m_nFile, pBytes + nPos, static_cast<std::size_t>(nNumBytes - nPos), nPos);
            if (nRead <= 0)
                return false;
            nPos += nRead;
        }
        return true;
    }

private:
    int m_nFile;
};

} // namespace zorpy

#endif
