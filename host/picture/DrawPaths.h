#ifndef HOST_PICTURE_DRAWPATHS_H
#define HOST_PICTURE_DRAWPATHS_H

#include <host/picture/CPen.h>

#include <vector>

namespace zorcld
{

class CPicture;

/// Draws lines that stand out from whatever is below them. Places may lie anywhere, at infinity too.
void DrawPaths(CPicture& picture, const std::vector<std::vector<CPixel>>& vecPaths);

} // namespace zorcld

#endif
