#ifndef HOST_QUERY_GROUNDFINDINGS_H
#define HOST_QUERY_GROUNDFINDINGS_H

#include <cstdint>
#include <string>

namespace zorcld
{

/// What is known of a run of the ground filter.
struct CGroundResult
{
    std::int64_t nNumAll = 0;    ///< points before
    std::int64_t nNumGround = 0; ///< points that stayed
    double dSpacing =
        0.0; ///< mean, seen from above, of the points before, metres as the filter took them; 0: none
};

/// @return why the result is hardly what its user wants, with the likely cause, one sentence without a full
///         stop; empty: nothing is odd about it.
std::string FindOddGround(const CGroundResult& result);

} // namespace zorcld

#endif
