#ifndef HOST_OUTPUT_BYTEFROMSHARE_H
#define HOST_OUTPUT_BYTEFROMSHARE_H

#include <algorithm>
#include <cmath>

namespace zorcld
{

/// A colour channel from 0 to 1, as files hold it: 0 to 255, rounded. Beyond them the ends hold.
inline int ByteFromShare(float fShare)
{
    return static_cast<int>(std::lround(std::clamp(fShare, 0.0F, 1.0F) * 255.0F));
}

} // namespace zorcld

#endif
