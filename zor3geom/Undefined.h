#ifndef ZOR3GEOM_UNDEFINED_H
#define ZOR3GEOM_UNDEFINED_H

namespace zor::geom
{

/// Stands for a coordinate that was never set, and for "no limit".
constexpr double c_dUndefined = 1.7e200;

} // namespace zor::geom

#endif
