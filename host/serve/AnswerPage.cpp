#include <host/serve/Resources.h>

#include <host/serve/CRefusal.h>
#include <host/serve/CRequest.h>
#include <host/serve/PageFiles.h>

#include <algorithm>
#include <string_view>

namespace zorcld
{

namespace
{

/// Does Accept-Encoding name gzip, and not with the weight 0? Whoever says nothing gets the file as it is.
bool TakesGzip(std::string_view sCodings)
{
    while (!sCodings.empty())
    {
        std::string_view sOne = sCodings.substr(0, sCodings.find(','));
        sCodings.remove_prefix(std::min(sOne.size() + 1, sCodings.size()));
        sOne.remove_prefix(std::min(sOne.find_first_not_of(" \t"), sOne.size()));
        const std::string_view sName = sOne.substr(0, sOne.find_first_of("; \t"));
        const std::size_t nWeight = sOne.find("q=");
        const bool bNone = nWeight != std::string_view::npos &&
                           sOne.find_first_not_of("0. \t", nWeight + 2) == std::string_view::npos;
        if (sName == "gzip" || sName == "*")
            return !bNone;
    }
    return false;
}

std::string_view ViewBytes(const unsigned char* pBytes, std::size_t nSize)
{
    return {reinterpret_cast<const char*>(pBytes), nSize};
}

} // namespace

CReply AnswerPage(const CRequest& request, CServed&)
{
    const CPageFile* const pEnd = c_pPageFiles + c_nNumPageFiles;
    const CPageFile* const pFile =
        std::find_if(c_pPageFiles, pEnd, [&](const CPageFile& file) { return request.sPath == file.pPath; });
    if (pFile == pEnd)
        throw CRefusal(404, "there is no such file");
    CReply reply;
    reply.sType = pFile->pType;
    const bool bGzip = TakesGzip(request.sAcceptEncoding);
    reply.sBody =
        bGzip ? ViewBytes(pFile->pGzip, pFile->nGzipSize) : ViewBytes(pFile->pPlain, pFile->nPlainSize);
    if (bGzip)
        reply.vecHeaders.emplace_back("Content-Encoding", "gzip");
    reply.vecHeaders.emplace_back("Vary", "Accept-Encoding");
    reply.vecHeaders.emplace_back("Cache-Control", "no-store");
    return reply;
}

} // namespace zorcld
