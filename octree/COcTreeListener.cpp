#include <octree/COcTreeListener.h>

template <class T>
COcTreeListener<T>::COcTreeListener(IPntCldListener* pListener, const COcTreeData<T>& store,
                                    std::int32_t nBatch)
    : m_store(store), m_pPnts(store.m_pPnts.get()), m_batch(pListener, nBatch)
{
    zor::geom::RECT_3D rect;
    store.GetBdry(rect);
    if (store.m_pColorListener != nullptr)
        store.m_pColorListener->SetZRange(rect.zmin, rect.zmax);
}

template class COcTreeListener<CTruncPnt>;
template class COcTreeListener<CTruncPnt_Color>;
