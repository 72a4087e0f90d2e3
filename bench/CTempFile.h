#ifndef BENCH_CTEMPFILE_H
#define BENCH_CTEMPFILE_H

#include <cstdio>
#include <filesystem>
#include <string>

#include <unistd.h>

/// A path in the temporary directory, of this process alone; what is there in the end is removed.
class CTempFile
{
public:
    explicit CTempFile(const std::string& sName)
        : m_sPath((std::filesystem::temp_directory_path() /
                   ("zor4data_bench_" + std::to_string(getpid()) + "_" + sName))
                      .string())
    {
    }

    ~CTempFile() { std::remove(m_sPath.c_str()); }

    CTempFile(const CTempFile&) = delete;
    CTempFile& operator=(const CTempFile&) = delete;

    const std::string& GetPath() const { return m_sPath; }

private:
    std::string m_sPath;
};

#endif
