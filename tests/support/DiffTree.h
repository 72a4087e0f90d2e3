#ifndef SUPPORT_DIFFTREE_H
#define SUPPORT_DIFFTREE_H

#include <tests/support/RefTree.h>

#include <string>

class COcTreeIndex;

/// Compares a built tree with the model's, record by record: root cube, extents, masks, runs, and the
/// packing of the children blocks, read byte by byte. @return empty, or the first difference.
std::string DiffTree(const COcTreeIndex& tree, const Ref::CTree& ref);

#endif
