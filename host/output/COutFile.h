#ifndef HOST_OUTPUT_COUTFILE_H
#define HOST_OUTPUT_COUTFILE_H

#include <host/output/CTempFile.h>

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace zorcld
{

/// An output file that appears whole or not at all: written under a temporary name beside the target, and
/// renamed when every byte has arrived on the disk. What is not a regular file, a device or a pipe, is
/// written directly.
class COutFile
{
public:
    /// @throws CFailure when the file cannot be created.
    explicit COutFile(std::string sPath);

    /// Without `Commit` nothing is left behind, and an older file stays as it was.
    ~COutFile();
    COutFile(const COutFile&) = delete;
    COutFile& operator=(const COutFile&) = delete;

    std::FILE* GetFile() const { return m_pFile; }

    /// The path as the user named it.
    const std::string& GetPath() const { return m_sPath; }

    /// @throws CFailure when not every byte could be written.
    void Write(const void* pBytes, std::size_t nBytes);
    void Write(std::string_view sText) { Write(sText.data(), sText.size()); }

    /// Closes the file and gives it its name.
    /// @throws CFailure when anything could not be written; the target is then as it was.
    void Commit();

    /// @throws CFailure with `errno` as the cause.
    [[noreturn]] void Fail() const;

private:
    std::string m_sPath;
    std::unique_ptr<CTempFile> m_pTemp; // null: written directly
    std::FILE* m_pFile = nullptr;
};

} // namespace zorcld

#endif
