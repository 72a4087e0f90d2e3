#ifndef HOST_SERVE_READATTRIBUTE_H
#define HOST_SERVE_READATTRIBUTE_H

#include <formats/CLasAttributes.h>
#include <host/serve/CJobs.h>
#include <host/serve/CServed.h>

#include <memory>
#include <string>
#include <string_view>

namespace zorcld
{

/// An attribute of all points, and what its colours stand for.
struct CReadAttribute
{
    std::shared_ptr<const CAttribute> pAttribute;
    CJobs::TJson legend;
};

/// @return the attribute of a name, as clients say it; LasAttribute_None: it is none.
enumLasAttribute ParseAttribute(std::string_view sName);

/// Reads an attribute from the file of a cloud, whose points it comes to in their order. Meanwhile there is a
/// second cloud in memory.
/// @throws CFailure where that cannot be, or the file's points are not the cloud's any more.
CReadAttribute ReadAttribute(const CServed& served, const CCloudVersion& version, enumLasAttribute eAttribute,
                             const std::string& sName, const CJobs::TTell& tell);

} // namespace zorcld

#endif
