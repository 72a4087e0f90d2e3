#ifndef SUPPORT_PNTTRAIT_H
#define SUPPORT_PNTTRAIT_H

#include <octree/CTruncPnt.h>
#include <octree/CTruncPnt_Color.h>
#include <tests/support/RefTree.h>
#include <zor4data/enumPntCldType.h>

#include <gtest/gtest.h>

#include <string>

/// What a test written once for both point types needs to know of each.
template <class T>
struct PntTrait;

template <>
struct PntTrait<CTruncPnt>
{
    static constexpr enumPntCldType c_eType = PntCldType_Pnt;
    static constexpr bool c_bColor = false;

    static CTruncPnt Make(const Ref::Pnt& pnt) { return {pnt.x, pnt.y, pnt.z}; }
    static Ref::Pnt Read(const CTruncPnt& pnt) { return {pnt.m_nX, pnt.m_nY, pnt.m_nZ, 0, 0, 0}; }
};

template <>
struct PntTrait<CTruncPnt_Color>
{
    static constexpr enumPntCldType c_eType = PntCldType_PntColor;
    static constexpr bool c_bColor = true;

    static CTruncPnt_Color Make(const Ref::Pnt& pnt) { return {pnt.x, pnt.y, pnt.z, pnt.r, pnt.g, pnt.b}; }
    static Ref::Pnt Read(const CTruncPnt_Color& pnt)
    {
        return {pnt.m_nX, pnt.m_nY, pnt.m_nZ, pnt.m_ucR, pnt.m_ucG, pnt.m_ucB};
    }
};

using BothPntTypes = ::testing::Types<CTruncPnt, CTruncPnt_Color>;

/// Names the instances of a typed test.
struct PntTypeName
{
    template <class T>
    static std::string GetName(int)
    {
        return PntTrait<T>::c_bColor ? "PntColor" : "Pnt";
    }
};

#endif
