// What hosts are compiled against: values, sizes, signatures and the order of slots.

#include <zor4data/CPntCld.h>
#include <zor4data/IPclProgressListener.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <type_traits>

namespace
{

// Position of a virtual function in its class's table: with the common C++ ABI of Linux, a pointer to a
// virtual member function begins with one plus the offset of its slot.
template <class Function>
std::size_t GetSlot(Function pFunction)
{
    std::size_t nOffset = 0;
    static_assert(sizeof(pFunction) >= sizeof(nOffset));
    std::memcpy(&nOffset, &pFunction, sizeof(nOffset));
    return (nOffset - 1) / sizeof(void*);
}

using TReadColorPnt = void (IPntCldReadListener::*)(double, double, double, unsigned char, unsigned char,
                                                    unsigned char);
using TReadPlainPnt = void (IPntCldReadListener::*)(double, double, double);

TEST(Interfaces, Enumerations_HaveTheirValues)
{
    static_assert(std::is_same_v<std::underlying_type_t<enumPntCldType>, std::int32_t>);
    static_assert(std::is_same_v<std::underlying_type_t<enumPntCldFile>, std::int32_t>);
    EXPECT_EQ(PntCldType_Pnt, 0);
    EXPECT_EQ(PntCldType_PntColor, 1);
    EXPECT_EQ(PntCldFile_Native, 0);
    EXPECT_EQ(PntCldFile_Ply, 1);
    EXPECT_EQ(PntCldFile_AsciiGrid, 2);
    EXPECT_EQ(PntCldFile_Las, 3);
}

TEST(Interfaces, Listeners_HaveTheirSignatures)
{
    static_assert(
        std::is_same_v<decltype(&IPntCldListener::OnPnts), void (IPntCldListener::*)(int, CCldCadPnt*)>);
    static_assert(std::is_same_v<decltype(&ICldColorListener::GetColor),
                                 void (ICldColorListener::*)(double, float&, float&, float&)>);
    static_assert(
        std::is_same_v<decltype(&ICldColorListener::SetZRange), void (ICldColorListener::*)(double, double)>);
    static_assert(std::is_same_v<decltype(&IDlgProgress::SetPos), bool (IDlgProgress::*)(int)>);
    static_assert(
        std::is_same_v<decltype(&IPclProgressListener::OnProgress), void (IPclProgressListener::*)(int)>);
    SUCCEED();
}

#if defined(__x86_64__)
TEST(Interfaces, Listeners_HaveTheirSlotsInOrder)
{
    EXPECT_EQ(GetSlot(&IPntCldListener::OnPnts), 0U);

    EXPECT_EQ(GetSlot(&ICldColorListener::GetColor), 0U);
    EXPECT_EQ(GetSlot(&ICldColorListener::SetZRange), 1U);

    EXPECT_EQ(GetSlot(&IPntCldReadListener::OnReadType), 0U);
    EXPECT_EQ(GetSlot(&IPntCldReadListener::OnReadNumPnts), 1U);
    EXPECT_EQ(GetSlot(static_cast<TReadColorPnt>(&IPntCldReadListener::OnReadPnt)), 2U);
    EXPECT_EQ(GetSlot(static_cast<TReadPlainPnt>(&IPntCldReadListener::OnReadPnt)), 3U);
    EXPECT_EQ(GetSlot(&IPntCldReadListener::OnReadEnd), 4U);

    EXPECT_EQ(GetSlot(&IDlgProgress::Start), 0U);
    EXPECT_EQ(GetSlot(&IDlgProgress::Stop), 1U);
    EXPECT_EQ(GetSlot(&IDlgProgress::SetPos), 2U);

    EXPECT_EQ(GetSlot(&IPclProgressListener::OnProgress), 0U);
}
#endif

// No slot for a destructor: the functions above are the whole table.
TEST(Interfaces, Listeners_HaveNoVirtualDestructor)
{
    static_assert(!std::has_virtual_destructor_v<IPntCldListener>);
    static_assert(!std::has_virtual_destructor_v<ICldColorListener>);
    static_assert(!std::has_virtual_destructor_v<IPntCldReadListener>);
    static_assert(!std::has_virtual_destructor_v<IDlgProgress>);
    static_assert(!std::has_virtual_destructor_v<IPclProgressListener>);
    static_assert(!std::is_destructible_v<IPntCldListener> && !std::is_destructible_v<IDlgProgress>);
    SUCCEED();
}

TEST(Interfaces, CPntCld_IsWhatReadersFeed)
{
    static_assert(std::is_base_of_v<IPntCldReadListener, CPntCld>);
    static_assert(std::is_convertible_v<CPntCld*, IPntCldReadListener*>);
    static_assert(std::is_copy_constructible_v<CPntCld> && std::is_copy_assignable_v<CPntCld>);

    CPntCld cld(nullptr);
    IPntCldReadListener& reader = cld;
    reader.OnReadType(PntCldType_Pnt);
    reader.OnReadNumPnts(1);
    reader.OnReadPnt(1.0, 2.0, 3.0);
    reader.OnReadEnd();
    EXPECT_EQ(cld.GetNumPnts(), 1);
}

// The destructor comes behind the slots of the interface, which stay where they are.
TEST(Interfaces, CPntCld_MayBeDerivedFrom)
{
    static_assert(!std::is_final_v<CPntCld> && std::has_virtual_destructor_v<CPntCld>);
#if defined(__x86_64__)
    EXPECT_EQ(GetSlot(&CPntCld::OnReadType), 0U);
    EXPECT_EQ(GetSlot(&CPntCld::OnReadNumPnts), 1U);
    EXPECT_EQ(GetSlot(&CPntCld::OnReadEnd), 4U);
#endif
}

TEST(Interfaces, CCldCadPnt_IsAPlainRecord)
{
    static_assert(std::is_trivially_copyable_v<CCldCadPnt>);
    static_assert(std::is_same_v<decltype(CCldCadPnt::m_nIndex), std::int32_t>);
    CCldCadPnt pnt;
    pnt.m_pnt = zor::geom::PNT_3D(1.0, 2.0, 3.0);
    pnt.m_fG = 0.25F;
    pnt.m_nIndex = 7;
    pnt.m_bSel = true;
    pnt.Init();
    EXPECT_EQ(pnt.m_pnt.x, 1.7e200);
    EXPECT_EQ(pnt.m_pnt.z, 1.7e200);
    EXPECT_EQ(pnt.m_fG, 1.0F);
    EXPECT_EQ(pnt.m_nIndex, -1);
    EXPECT_FALSE(pnt.m_bSel);
}

TEST(Interfaces, CCldCadPnt_SetFromPublicRecords)
{
    const CCldCadPnt pnt(CTruncPnt_Color(-15, 0, 123456, 255, 128, 0), 500000.125F, 0.0F, 10.0F, 3, nullptr);
    EXPECT_DOUBLE_EQ(pnt.m_pnt.x, 500000.1235);
    EXPECT_DOUBLE_EQ(pnt.m_pnt.z, 22.3456);
    EXPECT_EQ(pnt.m_fR, 1.0F);
    EXPECT_EQ(pnt.m_fG, static_cast<float>(128 / 255.0));
    EXPECT_EQ(pnt.m_nIndex, 3);
}

} // namespace
