#include <python/bind/HashFile.h>

#include <python/bind/CProgress.h>
#include <python/bind/Gil.h>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <memory>
#include <new>
#include <vector>

#define XXH_INLINE_ALL // NOLINT: so says its documentation
#include <xxhash.h>

namespace zorpy
{

namespace
{

/// A file that is read.
class CReadFile
{
public:
    explicit CReadFile(const std::string& sPath) : m_nFile(open(sPath.c_str(), O_RDONLY | O_CLOEXEC))
    {
        if (m_nFile < 0)
            ThrowErrno(errno);
    }
    ~CReadFile() { close(m_nFile); }
    CReadFile(const CReadFile&) = delete;
    CReadFile& operator=(const CReadFile&) = delete;

    /// @return how many bytes there are; 0 at the end.
    std::size_t Read(std::vector<unsigned char>& vecBlock) const
    {
        ssize_t nNum = 0;
        do
            nNum = read(m_nFile, vecBlock.data(), vecBlock.size());
        while (nNum < 0 && errno == EINTR);
        if (nNum < 0)
            ThrowErrno(errno);
        return static_cast<std::size_t>(nNum);
    }

private:
    int m_nFile;
};

std::string FormatHash(const XXH128_hash_t& hash)
{
    XXH128_canonical_t bytes;
    XXH128_canonicalFromHash(&bytes, hash);
    std::string sText;
    for (const unsigned nByte : bytes.digest)
        for (const unsigned nDigit : {nByte >> 4U, nByte & 15U})
            sText += "0123456789abcdef"[nDigit];
    return sText;
}

} // namespace

std::string HashFile(const std::string& sPath)
{
    const CReleasedGil released;
    const CReadFile file(sPath);
    const std::unique_ptr<XXH3_state_t, decltype(&XXH3_freeState)> pState(XXH3_createState(),
                                                                          &XXH3_freeState);
    if (pState == nullptr || XXH3_128bits_reset(pState.get()) != XXH_OK)
        throw std::bad_alloc();
    std::vector<unsigned char> vecBlock(std::size_t{1} << 18U);
    CSignalWatch watch;
    while (const std::size_t nNum = file.Read(vecBlock))
    {
        static_cast<void>(XXH3_128bits_update(pState.get(), vecBlock.data(), nNum));
        watch.PollClock();
    }
    return FormatHash(XXH3_128bits_digest(pState.get()));
}

std::string HashBytes(const std::string& sBytes)
{
    return FormatHash(XXH3_128bits(sBytes.data(), sBytes.size()));
}

} // namespace zorpy
