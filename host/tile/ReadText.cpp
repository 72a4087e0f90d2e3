#include <host/tile/ReadText.h>

#include <host/output/CFailure.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace zorcld
{

std::optional<std::string> ReadText(const std::string& sPath)
{
    const auto fail = [&] { return CFailure(sPath, std::string("cannot be read: ") + std::strerror(errno)); };
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pFile(std::fopen(sPath.c_str(), "rb"),
                                                                &std::fclose);
    if (pFile == nullptr && errno == ENOENT)
        return {};
    if (pFile == nullptr)
        throw fail();
    std::string sText;
    std::array<char, 65536> acPiece{};
    while (const std::size_t nSize = std::fread(acPiece.data(), 1, acPiece.size(), pFile.get()))
        sText.append(acPiece.data(), nSize);
    if (std::ferror(pFile.get()) != 0)
        throw fail();
    return sText;
}

} // namespace zorcld
