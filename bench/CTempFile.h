#ifndef BENCH_CTEMPFILE_H
#define BENCH_CTEMPFILE_H

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

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

/// Files that are written once, when they are first asked for.
class CTempFiles
{
public:
    /// @param write  called with the path when there is no file of this name yet; false ends the program.
    template <class TWrite>
    const std::string& Get(const std::string& sName, TWrite write)
    {
        for (const CFile& file : m_vecFiles)
            if (file.sName == sName)
                return file.pFile->GetPath();
        m_vecFiles.push_back({sName, std::make_unique<CTempFile>(sName)});
        const std::string& sPath = m_vecFiles.back().pFile->GetPath();
        if (!write(sPath))
        {
            std::fprintf(stderr, "%s: cannot be written\n", sPath.c_str());
            std::exit(1);
        }
        return sPath;
    }

private:
    struct CFile
    {
        std::string sName;
        std::unique_ptr<CTempFile> pFile;
    };

    std::vector<CFile> m_vecFiles;
};

#endif
