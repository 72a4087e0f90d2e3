#ifndef OCTREE_IOCTREELISTENER_H
#define OCTREE_IOCTREELISTENER_H

#include <cstdint>

/// Visitor of a walk over the tree of a store with points of type `T`.
///
/// The walks are templates over the visitor's own type: with a final visitor none of these calls is a
/// virtual one.
template <class T>
class IOcTreeListener
{
public:
    /// One point of the current leaf.
    virtual void OnPnt(std::int32_t nIndex) = 0;

    /// The current leaf is finished; what has been gathered is to be handed over.
    virtual void OnLeafEnd() = 0;

    /// Copies the store's record of a point.
    virtual void GetPnt(std::int32_t nIndex, T& pnt) const = 0;

    virtual bool IsDeleted(std::int32_t nIndex) const = 0;

protected:
    ~IOcTreeListener() = default;
};

#endif
