#ifndef HOST_QUERY_FILTERGROUND_H
#define HOST_QUERY_FILTERGROUND_H

#include <string>

class CPntCld;
class IPclProgressListener;

namespace zorcld
{

/// The sizes that the library's ground filter goes by; they suit metres.
constexpr double c_dSmallestWindow = 3.0;
constexpr double c_dLargestWindow = 33.0;

/// How many metres the filter is to take a coordinate unit for.
struct CGroundScale
{
    double dPlan = 1.0;   ///< of x and y
    double dHeight = 1.0; ///< of z

    bool IsOne() const { return dPlan == 1.0 && dHeight == 1.0; }
};

/// Reduces the cloud to its ground points, whose coordinates stay as they are.
/// @param sPath      the file of the cloud, for the message.
/// @param pListener  told of the progress; null: no calls.
/// @throws CFailure where the cloud is too wide in metres.
void FilterGround(CPntCld& cloud, const CGroundScale& scale, const std::string& sPath,
                  IPclProgressListener* pListener);

} // namespace zorcld

#endif
