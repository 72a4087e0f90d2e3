#ifndef HOST_SERVE_ANSWER_H
#define HOST_SERVE_ANSWER_H

namespace zorcld
{

class CGate;
class CServed;
struct CReply;
struct CRequest;

/// Answers a request, whatever it asks for; throws nothing but std::bad_alloc where not even a line fits.
CReply Answer(const CRequest& request, const CGate& gate, CServed& served);

/// May the answer take longer than that of a tile?
bool IsSlow(const CRequest& request);

} // namespace zorcld

#endif
