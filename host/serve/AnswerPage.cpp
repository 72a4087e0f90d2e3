#include <host/serve/Resources.h>

#include <host/serve/CRefusal.h>
#include <host/serve/CRequest.h>
#include <host/serve/PageFiles.h>

#include <algorithm>

namespace zorcld
{

CReply AnswerPage(const CRequest& request, CServed&)
{
    const CPageFile* const pEnd = c_pPageFiles + c_nNumPageFiles;
    const CPageFile* const pFile =
        std::find_if(c_pPageFiles, pEnd, [&](const CPageFile& file) { return request.sPath == file.pPath; });
    if (pFile == pEnd)
        throw CRefusal(404, "there is no such file");
    CReply reply;
    reply.sType = pFile->pType;
    reply.sBody = {reinterpret_cast<const char*>(pFile->pBytes), pFile->nSize};
    reply.vecHeaders.emplace_back("Content-Encoding", "gzip"); // every browser takes it
    reply.vecHeaders.emplace_back("Cache-Control", "no-store");
    return reply;
}

} // namespace zorcld
