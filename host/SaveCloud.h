#ifndef HOST_SAVECLOUD_H
#define HOST_SAVECLOUD_H

#include <functional>
#include <string>

class CConsole;
class COutFile;
class CPntCld;

/// Writes all points of a cloud, not yet committed. What the user should know of the file goes to the
/// console.
using TSaveCloud = std::function<void(CPntCld&, COutFile&, const CConsole&)>;

/// Chosen by the extension: .cld, .ply or .csv.
/// @throws CUsageError for an unknown one.
TSaveCloud FindSaveCloud(const std::string& sPath);

#endif
