#include <host/serve/Resources.h>

#include <host/serve/CRefusal.h>
#include <host/serve/CRequest.h>
#include <host/serve/CServed.h>
#include <host/serve/ReadAttribute.h>
#include <host/serve/RequestNumbers.h>

namespace zorcld
{

namespace
{

/// Stops the job of any attribute, or of the one that is named.
CJobs::TJson CancelColors(CServed& served, const std::string& sName)
{
    for (const char* const pName : {"class", "intensity", "return"})
        if (sName.empty() || sName == pName)
            served.GetJobs().Cancel(std::string("color ") + pName);
    return {{"state", "idle"}};
}

CJobs::TJson MakeColors(CServed& served, const std::string& sName, const CJobs::TTell& tell)
{
    const CReadAttribute read = ReadAttribute(served, *served.GetFirst(), ParseAttribute(sName), sName, tell);
    served.AddAttribute(read.pAttribute);
    CJobs::TJson json = {{"by", sName}};
    json.update(read.legend);
    return json;
}

} // namespace

CReply AnswerColor(const CRequest& request, CServed& served)
{
    const std::string* const pName = request.FindParam("by");
    const std::string sName = pName == nullptr ? "" : *pName;
    const bool bCancel = IsCancel(request);
    if (ParseAttribute(sName) == LasAttribute_None && !(bCancel && pName == nullptr))
        throw CRefusal(400, "by is none of class, intensity and return");
    if (bCancel)
        return MakeJsonReply(CancelColors(served, sName));
    if (served.GetFacts()["attributes"].empty())
        throw CRefusal(404, "the file says nothing of its points beside places and colours");
    // The results of all three are kept: so are their colours.
    return MakeJsonReply(served.GetJobs().Ask("color " + sName, "",
                                              [sName, &served](const CJobs::TTell& tell)
                                              { return MakeColors(served, sName, tell); }));
}

} // namespace zorcld
