#ifndef SUPPORT_CPNTTRAIT_H
#define SUPPORT_CPNTTRAIT_H

#include <octree/CTruncPnt.h>
#include <octree/CTruncPnt_Color.h>
#include <tests/support/RefTree.h>
#include <zor4data/enumPntCldType.h>

#include <gtest/gtest.h>

#include <string>

/// What a test written once for both point types needs to know of each.
template <class T>
struct CPntTrait;

template <>
struct CPntTrait<CTruncPnt>
{
    static constexpr enumPntCldType c_eType = PntCldType_Pnt;
    static constexpr bool c_bColor = false;

    static CTruncPnt Make(const Ref::CPnt& pnt) { return {pnt.x, pnt.y, pnt.z}; }
    static Ref::CPnt Read(const CTruncPnt& pnt) { return {pnt.m_nX, pnt.m_nY, pnt.m_nZ, 0, 0, 0}; }
};

template <>
struct CPntTrait<CTruncPnt_Color>
{
    static constexpr enumPntCldType c_eType = PntCldType_PntColor;
    static constexpr bool c_bColor = true;

    static CTruncPnt_Color Make(const Ref::CPnt& pnt) { return {pnt.x, pnt.y, pnt.z, pnt.r, pnt.g, pnt.b}; }
    static Ref::CPnt Read(const CTruncPnt_Color& pnt)
    {
        return {pnt.m_nX, pnt.m_nY, pnt.m_nZ, pnt.m_ucR, pnt.m_ucG, pnt.m_ucB};
    }
};

using TBothPntTypes = ::testing::Types<CTruncPnt, CTruncPnt_Color>;

/// Names the instances of a typed test.
struct CPntTypeName
{
    template <class T>
    static std::string GetName(int)
    {
        return CPntTrait<T>::c_bColor ? "PntColor" : "Pnt";
    }
};

#endif
