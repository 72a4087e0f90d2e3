#ifndef HOST_SERVE_RESOURCES_H
#define HOST_SERVE_RESOURCES_H

#include <host/serve/CReply.h>

#include <nlohmann/json_fwd.hpp>

namespace zorcld
{

class CServed;
struct CRequest;

// Each answers the requests for one resource; AnswerInfo stands in AnswerInfo.cpp, and so on, since a header
// for each would hold one line. A new resource is a file of its own, a line here and a line in the table of
// Answer.cpp. They throw CRefusal, and CUsageError for numbers that are none.

CReply AnswerInfo(const CRequest& request, CServed& served);
CReply AnswerTile(const CRequest& request, CServed& served);
CReply AnswerPick(const CRequest& request, CServed& served);
CReply AnswerNearest(const CRequest& request, CServed& served);
CReply AnswerPnt(const CRequest& request, CServed& served);
CReply AnswerRect(const CRequest& request, CServed& served);
CReply AnswerCount(const CRequest& request, CServed& served);
CReply AnswerExport(const CRequest& request, CServed& served);
CReply AnswerProfile(const CRequest& request, CServed& served);
CReply AnswerOutline(const CRequest& request, CServed& served);
CReply AnswerGround(const CRequest& request, CServed& served);
CReply AnswerColor(const CRequest& request, CServed& served);
CReply AnswerPage(const CRequest& request, CServed& served);

/// What several of them need.
CReply MakeJsonReply(const nlohmann::ordered_json& json);

} // namespace zorcld

#endif
