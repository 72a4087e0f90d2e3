#ifndef HOST_QUERY_FILTERGROUND_H
#define HOST_QUERY_FILTERGROUND_H

#include <zor4data/CGroundScale.h>

#include <string>
#include <vector>

class CPntCld;
struct CCoordSystem;
class IPclProgressListener;

namespace zorcld
{

/// The sizes that the library's ground filter goes by; they suit metres.
constexpr double c_dSmallestWindow = 3.0;
constexpr double c_dLargestWindow = 33.0;

/// Reduces the cloud to its ground points, whose coordinates stay as they are.
/// @param sPath      the file of the cloud, for the message.
/// @param pListener  told of the progress; null: no calls.
/// @throws CFailure where the cloud is too wide in metres.
void FilterGround(CPntCld& cloud, const CGroundScale& scale, const std::string& sPath,
                  IPclProgressListener* pListener);

/// The points that FilterGround leaves, by index, ascending; the cloud stays as it is.
/// @throws CFailure as FilterGround.
std::vector<int> FindGroundPnts(const CPntCld& cloud, const CGroundScale& scale, const std::string& sPath,
                                IPclProgressListener* pListener);

/// The scale that a file states; one where it states none.
/// @throws CFailure for degrees.
CGroundScale FindGroundScale(const CCoordSystem& coords, const std::string& sPath);

} // namespace zorcld

#endif
