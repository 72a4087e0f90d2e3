#ifndef IO_PLY_CPLYELEMENTREADER_H
#define IO_PLY_CPLYELEMENTREADER_H

#include <formats/CPlyHeader.h>
#include <io/ply/CPlyBuffer.h>
#include <io/ply/CPlyLayout.h>
#include <io/ply/CPlyProgress.h>
#include <io/ply/CPlyVertex.h>

#include <cstdint>

class IPntCldReadListener;

/// Reads the items of one element.
class CPlyElementReader
{
public:
    /// @param listener  receives the points of a vertex element.
    /// @param buffer    stands at the first byte of the element.
    /// @param pProps    the element's properties.
    ///
    /// All of them are kept, not owned.
    CPlyElementReader(IPntCldReadListener& listener, CPlyBuffer& buffer, const CPlyProgress& progress,
                      const CPlyElement& element, const CPlyProperty* pProps)
        : m_listener(listener), m_buffer(buffer), m_progress(progress), m_element(element), m_pProps(pProps),
          m_layout(pProps, element.nNumProps), m_bColor(m_layout.HasColor())
    {
    }

    /// Reads the element to its end; for a vertex element it calls OnReadType, OnReadNumPnts, and
    /// OnReadPnt once an item.
    ///
    /// @return false when the load has failed.
    bool Read();

private:
    bool Announce();
    std::int32_t CountWholeItems(std::int32_t nMax) const;
    void TakeWholeItems(std::int32_t i, std::int32_t nEnd);
    void DeliverWholeItems(std::int32_t i, std::int32_t nEnd);
    bool ReadItem();
    bool ReadValue(const CPlyProperty& prop);

    IPntCldReadListener& m_listener;
    CPlyBuffer& m_buffer;
    const CPlyProgress& m_progress;
    const CPlyElement& m_element;
    const CPlyProperty* m_pProps;
    const CPlyLayout m_layout;
    const bool m_bColor;
    CPlyVertexSlots m_slots;
};

#endif
