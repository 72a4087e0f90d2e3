#include <host/tile/HashFile.h>

#include <formats/CFilePtr.h>
#include <formats/OpenRegularFile.h>
#include <host/output/CFailure.h>

#include <fmt/format.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <memory>
#include <vector>

#define XXH_INLINE_ALL // NOLINT: so says its documentation
#include <xxhash.h>

namespace zorcld
{

namespace
{

std::string FormatHash(const XXH128_hash_t& hash)
{
    return fmt::format("{:016x}{:016x}", hash.high64, hash.low64);
}

} // namespace

std::string HashFile(const std::string& sPath, const std::atomic<bool>* pStop)
{
    CFileCause cause;
    const CFilePtr pFile = OpenRegularFile(sPath.c_str(), cause);
    if (pFile == nullptr)
        throw CFailure(sPath, cause);
    const std::unique_ptr<XXH3_state_t, decltype(&XXH3_freeState)> pState(XXH3_createState(),
                                                                          &XXH3_freeState);
    std::vector<unsigned char> vecBlock(std::size_t{1} << 18U);
    if (pState == nullptr || XXH3_128bits_reset(pState.get()) != XXH_OK)
        throw std::bad_alloc();
    std::size_t nNum = 0;
    while ((pStop == nullptr || !*pStop) &&
           (nNum = std::fread(vecBlock.data(), 1, vecBlock.size(), pFile.get())) > 0)
        static_cast<void>(XXH3_128bits_update(pState.get(), vecBlock.data(), nNum));
    if (std::ferror(pFile.get()) != 0)
        throw CFailure(sPath, std::string("could not be read: ") + std::strerror(errno));
    return FormatHash(XXH3_128bits_digest(pState.get()));
}

bool IsHash(const std::string& sText)
{
    return sText.size() == 32 && sText.find_first_not_of("0123456789abcdef") == std::string::npos;
}

std::string HashText(const std::string& sText)
{
    return FormatHash(XXH3_128bits(sText.data(), sText.size()));
}

} // namespace zorcld
