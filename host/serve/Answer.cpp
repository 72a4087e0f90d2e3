#include <host/serve/Answer.h>

#include <host/output/CFailure.h>
#include <host/serve/CGate.h>
#include <host/serve/CRefusal.h>
#include <host/serve/CRequest.h>
#include <host/serve/CServed.h>
#include <host/serve/LineForClient.h>
#include <host/serve/Resources.h>

#include <algorithm>
#include <array>
#include <new>
#include <string_view>

namespace zorcld
{

namespace
{

enum class enumNeeds
{
    Nothing,
    Cloud ///< loaded
};

/// A resource: the paths that it answers, and how.
struct CResource
{
    std::string_view sPath; ///< ends in a slash: whatever begins so
    CReply (*pAnswer)(const CRequest&, CServed&);
    enumNeeds eNeeds;
    bool bSlow;
};

constexpr std::array c_resources = {
    CResource{"/api/info", AnswerInfo, enumNeeds::Nothing, false},
    CResource{"/api/tile/", AnswerTile, enumNeeds::Cloud, false},
    CResource{"/api/pick", AnswerPick, enumNeeds::Cloud, false},
    CResource{"/api/nearest", AnswerNearest, enumNeeds::Cloud, false},
    CResource{"/api/point", AnswerPnt, enumNeeds::Cloud, false},
    CResource{"/api/rect", AnswerRect, enumNeeds::Cloud, true},
    CResource{"/api/count", AnswerCount, enumNeeds::Cloud, true},
    CResource{"/api/export", AnswerExport, enumNeeds::Cloud, true},
    CResource{"/api/profile", AnswerProfile, enumNeeds::Cloud, true},
    CResource{"/api/outline", AnswerOutline, enumNeeds::Cloud, false},
    CResource{"/api/ground", AnswerGround, enumNeeds::Cloud, false},
    CResource{"/api/color", AnswerColor, enumNeeds::Cloud, false},
    CResource{"/api/", nullptr, enumNeeds::Nothing, false},
    CResource{"/", AnswerPage, enumNeeds::Nothing, false},
};

/// The last one answers whatever is left.
const CResource& FindResource(std::string_view sPath)
{
    return *std::find_if(c_resources.begin(), c_resources.end() - 1,
                         [=](const CResource& resource)
                         {
                             return resource.sPath.back() == '/'
                                        ? sPath.substr(0, resource.sPath.size()) == resource.sPath
                                        : sPath == resource.sPath;
                         });
}

void CheckReady(const CServed& served)
{
    const CServed::CProgress progress = served.GetProgress();
    if (progress.eState == CServed::enumState::Loading)
        throw CRefusal(503, "the cloud is being loaded");
    if (progress.eState == CServed::enumState::Failed)
        throw CRefusal(503, "the cloud could not be loaded: " + progress.sCause);
}

CReply AnswerChecked(const CRequest& request, const CGate& gate, CServed& served)
{
    gate.Check(request);
    if (request.sMethod != "GET")
    {
        CReply reply = MakeLineReply(405, "only GET is answered");
        reply.vecHeaders.emplace_back("Allow", "GET");
        return reply;
    }
    const CResource& resource = FindResource(request.sPath);
    if (resource.pAnswer == nullptr)
        throw CRefusal(404, "there is no such resource");
    if (resource.eNeeds == enumNeeds::Cloud)
        CheckReady(served);
    CReply reply = resource.pAnswer(request, served);
    if (request.sPath == "/")
        reply.vecHeaders.emplace_back("Set-Cookie", gate.FormatCookie());
    return reply;
}

/// Answers, refuses or fails.
CReply AnswerWhatever(const CRequest& request, const CGate& gate, CServed& served)
{
    try
    {
        return AnswerChecked(request, gate, served);
    }
    catch (const CRefusal& refusal)
    {
        return MakeLineReply(refusal.GetStatus(), LineForClient(refusal.what()));
    }
    catch (const CUsageError& error)
    {
        return MakeLineReply(400, LineForClient(error.what()));
    }
    catch (const CFailure& failure) // of the file: it is not made for what is asked
    {
        return MakeLineReply(400, LineForClient(failure.GetCause()));
    }
    catch (const std::bad_alloc&)
    {
        return MakeLineReply(503, "not enough memory");
    }
    catch (const std::exception& error)
    {
        return MakeLineReply(500, LineForClient(error.what()));
    }
}

} // namespace

CReply Answer(const CRequest& request, const CGate& gate, CServed& served)
{
    CReply reply = AnswerWhatever(request, gate, served);
    if (request.sMethod == "HEAD") // whose client expects no body, whatever is said
        reply.sBody = {};
    return reply;
}

bool IsSlow(const CRequest& request)
{
    return FindResource(request.sPath).bSlow;
}

} // namespace zorcld
