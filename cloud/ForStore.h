#ifndef CLOUD_FORSTORE_H
#define CLOUD_FORSTORE_H

#include <cloud/COcTree.h>
#include <zor4data/enumPntCldType.h>

/// Runs `operation` on the live store: the only switch on the point type.
///
/// @param other  the result for a cloud without point type.
template <class Store, class StoreColor, class Result, class Operation>
Result ForStore(enumPntCldType eType, Store& cld, StoreColor& cldColor, Result other, Operation operation)
{
    switch (eType)
    {
    case PntCldType_Pnt:
        return operation(cld);
    case PntCldType_PntColor:
        return operation(cldColor);
    }
    return other;
}

/// The same for an operation without result: nothing happens for a cloud without point type.
template <class Store, class StoreColor, class Operation>
void ForStore(enumPntCldType eType, Store& cld, StoreColor& cldColor, Operation operation)
{
    ForStore(eType, cld, cldColor, 0,
             [&](auto& store)
             {
                 operation(store);
                 return 0;
             });
}

#endif
