#ifndef TESTS_IO_CMEMFILE_H
#define TESTS_IO_CMEMFILE_H

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

/// A file in memory that has a path: what the readers are given where thousands of small files are needed.
class CMemFile
{
public:
    CMemFile() : m_nFile(memfd_create("zor4data-test", MFD_CLOEXEC))
    {
        if (m_nFile < 0)
            throw std::runtime_error("no file in memory");
        m_sPath = "/proc/self/fd/" + std::to_string(m_nFile);
    }

    explicit CMemFile(std::string_view sBytes) : CMemFile() { Set(sBytes); }

    CMemFile(const CMemFile&) = delete;
    CMemFile& operator=(const CMemFile&) = delete;
    ~CMemFile() { close(m_nFile); }

    /// Makes `sBytes` the file's whole content.
    void Set(std::string_view sBytes)
    {
        Resize(sBytes.size());
        Write(sBytes, 0);
    }

    /// Cuts the file off, or fills it up with zeros.
    void Resize(std::size_t nSize)
    {
        if (ftruncate(m_nFile, static_cast<off_t>(nSize)) != 0)
            throw std::runtime_error("cannot resize the file in memory");
    }

    /// Overwrites a part of the file.
    void Write(std::string_view sBytes, std::size_t nOffset)
    {
        if (pwrite(m_nFile, sBytes.data(), sBytes.size(), static_cast<off_t>(nOffset)) !=
            static_cast<ssize_t>(sBytes.size()))
            throw std::runtime_error("cannot write to the file in memory");
    }

    const char* GetPath() const { return m_sPath.c_str(); }

private:
    int m_nFile;
    std::string m_sPath;
};

#endif
