#ifndef HOST_FILES_CSHIFTEDSOURCE_H
#define HOST_FILES_CSHIFTEDSOURCE_H

#include <formats/IPntSource.h>
#include <zor3geom/PNT_2D.h>

#include <memory>

namespace zorcld
{

/// The points of a source, all of them moved in plan.
/// @param pSource  not null.
std::unique_ptr<IPntSource> MakeShiftedSource(std::unique_ptr<IPntSource> pSource,
                                              const zor::geom::PNT_2D& shift);

} // namespace zorcld

#endif
