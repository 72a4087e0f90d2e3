#ifndef ZOR3GEOM_BOOL_OP_H
#define ZOR3GEOM_BOOL_OP_H

namespace zor::geom
{

/// Operations of `DoBoolOperation`.
enum BOOL_OP
{
    BOOL_OP_SUB = 2, ///< a − b: the part of a that lies outside b
};

} // namespace zor::geom

#endif
