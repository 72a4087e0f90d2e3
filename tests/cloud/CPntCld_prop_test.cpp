// Random operations on a cloud against a simple model of both of its stores.

#include <tests/support/CRandom.h>
#include <tests/support/CRecListener.h>
#include <tests/support/CRefQuery.h>
#include <tests/support/CheckProp.h>
#include <zor4data/CPntCld.h>

#include <array>
#include <cstring>
#include <limits>

namespace
{

/// One store of the model.
struct CModelStore
{
    bool bHasArray = false;
    int nNumAdded = 0;
    bool bModified = false;
    int nVersion = 0;
    Ref::CStore data;

    CModelStore() { data.org = {4027580416.0F, 4027580416.0F, 4027580416.0F}; }

    bool Init(int n)
    {
        if (bHasArray)
            return false;
        const std::size_t nNum = n < 0 ? 0 : static_cast<std::size_t>(n);
        bHasArray = true;
        nNumAdded = 0;
        data.pnts.assign(nNum, Ref::CPnt());
        data.selected.assign(nNum, false);
        data.deleted.assign(nNum, false);
        return true;
    }

    bool Add(double x, double y, double z, const std::array<std::uint8_t, 3>& color)
    {
        if (nNumAdded >= static_cast<int>(data.pnts.size()))
            return false;
        if (nNumAdded == 0)
            data.org = {Ref::ToOrigin(x), Ref::ToOrigin(y), Ref::ToOrigin(z)};
        data.pnts[static_cast<std::size_t>(nNumAdded++)] = {Ref::ToCompact(x, data.org[0]),
                                                            Ref::ToCompact(y, data.org[1]),
                                                            Ref::ToCompact(z, data.org[2]),
                                                            color[0],
                                                            color[1],
                                                            color[2]};
        return true;
    }

    bool ComputeTree()
    {
        data.tree = Ref::BuildTree(data.pnts);
        data.hasTree = true;
        return !data.pnts.empty();
    }

    void Remove(const std::vector<bool>& vecGone)
    {
        std::vector<Ref::CPnt> pnts;
        for (std::size_t i = 0; i < data.pnts.size(); ++i)
            if (!vecGone[i])
                pnts.push_back(data.pnts[i]);
        data.pnts = pnts;
        ComputeTree();
        data.selected.assign(pnts.size(), false);
        data.deleted.assign(pnts.size(), false);
        SetModified(true);
    }

    void ReadEnd()
    {
        if (!ComputeTree())
            return;
        std::vector<bool> vecGone(data.pnts.size());
        const std::vector<int> vecDuplicates = Ref::FindDuplicates(data.pnts, data.tree);
        for (const int i : vecDuplicates)
            vecGone[static_cast<std::size_t>(i)] = true;
        if (!vecDuplicates.empty())
            Remove(vecGone);
    }

    void DelSel()
    {
        const std::vector<bool> vecGone = data.selected;
        for (const bool bGone : vecGone)
            if (bGone)
                return Remove(vecGone);
    }

    void Clear()
    {
        bHasArray = false;
        data.pnts.clear();
        data.selected.clear();
        data.deleted.clear();
        data.tree = Ref::CTree();
        data.hasTree = false;
    }

    void SetModified(bool b)
    {
        if (b && !bModified)
            nVersion =
                nVersion == std::numeric_limits<int>::max() ? std::numeric_limits<int>::min() : nVersion + 1;
        bModified = b;
    }
};

/// An operation and the seed of its arguments.
struct COp
{
    int nKind = 0;
    std::uint64_t nSeed = 0;
};

std::ostream& operator<<(std::ostream& os, const COp& op)
{
    static const char* const c_names[] = {
        "OnReadType", "Init",   "AddPnt",    "AddPnt color", "OnReadPnt", "OnReadPnt color", "ComputeTree",
        "OnReadEnd",  "SelPnt", "UnSelPnts", "DelSelPnts",   "Clear",     "SetModified",     "SetVersion"};
    return os << c_names[op.nKind] << " " << op.nSeed;
}

constexpr int c_nNumKinds = 14;

/// A cloud and its model, driven side by side.
class CPair
{
public:
    /// @return whether the results of the operation agree.
    bool Run(const COp& op)
    {
        CRandom random(op.nSeed);
        CModelStore* const pStore = GetStore();
        switch (op.nKind)
        {
        case 0:
            m_nType =
                random.Chance(6) ? static_cast<int>(random.Int(-3, 3)) : static_cast<int>(random.Int(0, 1));
            m_cld.OnReadType(static_cast<enumPntCldType>(m_nType));
            return true;
        case 1:
            return Init(static_cast<int>(random.Chance(3) ? random.Int(-2, 12) : random.Int(0, 150)));
        case 2:
        case 3:
        case 4:
        case 5:
            return Add(op.nKind, random);
        case 6:
            return m_cld.ComputeTree() == (pStore != nullptr && pStore->ComputeTree());
        default:
            Change(op.nKind, random);
            return true;
        }
    }

    /// @return empty, or what a host would see to differ.
    std::string Diff() const
    {
        const CModelStore* const pStore = const_cast<CPair*>(this)->GetStore();
        if (pStore == nullptr)
            return m_cld.GetNumPnts() == 0 && m_cld.GetVersion() == -1 && !m_cld.IsModified() ? ""
                                                                                              : "not inert";
        if (m_cld.GetNumPnts() != static_cast<int>(pStore->data.pnts.size()))
            return "number of points";
        if (m_cld.IsModified() != pStore->bModified || m_cld.GetVersion() != pStore->nVersion)
            return "modified flag or version";
        const std::string sDiff = DiffPnts(pStore->data);
        return sDiff.empty() ? DiffQueries(pStore->data) : sDiff;
    }

private:
    CModelStore* GetStore() { return m_nType == 0 ? &m_plain : m_nType == 1 ? &m_colored : nullptr; }

    bool Init(int n)
    {
        CModelStore* const pStore = GetStore();
        return m_cld.Init(n) == (pStore != nullptr && pStore->Init(n));
    }

    static double Coord(CRandom& random)
    {
        static const std::vector<double> vecOdd{std::numeric_limits<double>::quiet_NaN(),
                                                std::numeric_limits<double>::infinity(),
                                                -1e308,
                                                214748.36475,
                                                -214748.3649,
                                                4000000.5};
        if (random.Chance(60))
            return random.Pick(vecOdd);
        return random.Chance(2) ? static_cast<double>(random.Int(-3, 3))
                                : static_cast<double>(random.Int(-20, 20)) * 0.0001;
    }

    bool Add(int nKind, CRandom& random)
    {
        bool bSame = true;
        for (std::int64_t n = random.Int(1, 60); n > 0; --n)
        {
            const double x = Coord(random);
            const double y = Coord(random);
            const double z = Coord(random);
            const auto c = [&] { return static_cast<std::uint8_t>(random.Int(0, 255)); };
            const std::array<std::uint8_t, 3> color{c(), c(), c()};
            bSame = AddOne(nKind, x, y, z, color) && bSame;
        }
        return bSame;
    }

    bool AddOne(int nKind, double x, double y, double z, const std::array<std::uint8_t, 3>& color)
    {
        CModelStore* const pStore = GetStore();
        const bool bColored = m_nType == 1;
        const std::array<std::uint8_t, 3> none{0, 0, 0};
        const std::array<std::uint8_t, 3> green{0, 255, 0};
        const auto add = [&](const std::array<std::uint8_t, 3>& stored)
        { return pStore != nullptr && pStore->Add(x, y, z, bColored ? stored : none); };
        switch (nKind)
        {
        case 2:
            return m_cld.AddPnt(x, y, z) == add(green);
        case 3:
            return m_cld.AddPnt(x, y, z, color[0], color[1], color[2]) == add(color);
        case 4:
            m_cld.OnReadPnt(x, y, z);
            if (!bColored)
                add(none);
            return true;
        default:
            m_cld.OnReadPnt(x, y, z, color[0], color[1], color[2]);
            if (bColored)
                add(color);
            return true;
        }
    }

    void Change(int nKind, CRandom& random)
    {
        CModelStore* const pStore = GetStore();
        CModelStore unused;
        CModelStore& store = pStore == nullptr ? unused : *pStore;
        const bool b = random.Chance(2);
        switch (nKind)
        {
        case 7:
            m_cld.OnReadEnd();
            return store.ReadEnd();
        case 8:
            return Select(store, random);
        case 9:
            m_cld.UnSelPnts();
            return store.data.selected.assign(store.data.selected.size(), false);
        case 10:
            m_cld.DelSelPnts();
            return store.DelSel();
        case 11:
            m_cld.Clear();
            return store.Clear();
        case 12:
            m_cld.SetModified(b);
            return store.SetModified(b);
        default:
            store.nVersion = b ? std::numeric_limits<int>::max() : static_cast<int>(random.Int(-5, 5));
            m_cld.SetVersion(store.nVersion);
        }
    }

    void Select(CModelStore& store, CRandom& random)
    {
        m_cld.SelPnt(static_cast<int>(random.Int(-20, -1)), random.Chance(2));
        const std::int64_t nNumPnts = static_cast<std::int64_t>(store.data.pnts.size());
        for (std::int64_t n = random.Int(1, 20); n > 0 && nNumPnts > 0; --n)
        {
            const std::int64_t i = random.Int(0, nNumPnts - 1);
            const bool bToggle = random.Chance(2);
            m_cld.SelPnt(static_cast<int>(i), bToggle);
            const std::size_t at = static_cast<std::size_t>(i);
            store.data.selected[at] = !(bToggle && store.data.selected[at]);
        }
    }

    std::string DiffPnts(const Ref::CStore& data) const
    {
        for (std::size_t i = 0; i < data.pnts.size(); ++i)
        {
            zor::geom::PNT_3D pnt;
            m_cld.GetPnt(static_cast<int>(i), pnt);
            if (pnt.x != data.pnts[i].x / 10000.0 + static_cast<double>(data.org[0]) ||
                pnt.y != data.pnts[i].y / 10000.0 + static_cast<double>(data.org[1]) ||
                pnt.z != data.pnts[i].z / 10000.0 + static_cast<double>(data.org[2]))
                return "coordinates of point " + std::to_string(i);
            unsigned char r = 0;
            unsigned char g = 0;
            unsigned char b = 0;
            if (m_cld.GetPntColor(static_cast<int>(i), r, g, b) != (m_nType == 1) || r != data.pnts[i].r ||
                g != data.pnts[i].g || b != data.pnts[i].b)
                return "colour of point " + std::to_string(i);
        }
        zor::geom::RECT_3D rect;
        if (m_cld.GetBdry(rect) != data.hasTree)
            return "presence of a tree";
        if (!data.hasTree)
            return "";
        const std::array<double, 6> box = Ref::CalcBox(data.tree, data.org);
        const std::array<double, 6> is{rect.xmin, rect.ymin, rect.zmin, rect.xmax, rect.ymax, rect.zmax};
        return is == box ? "" : "box";
    }

    std::string DiffQueries(const Ref::CStore& data) const
    {
        const Ref::CHost host{m_nType == 1, false, false, 7};
        for (int nQuery = 0; nQuery < 3; ++nQuery)
        {
            CCallLog log;
            CRecColorListener color(&log);
            CRecListener rec(&log);
            m_forward.m_pTarget = &color;
            Ref::CQuery query(data);
            if (nQuery == 0)
            {
                m_cld.GetPnts(&rec, host.batch);
                query.All();
            }
            else if (nQuery == 1)
            {
                m_cld.GetPnts_Lod(&rec, 0.5, host.batch);
                query.Lod(0.5);
            }
            else
            {
                m_cld.GetPnts_LodClip(&rec, 0.001, {zor::geom::PLANE_3D(1.0, 0.25, 0.0, -0.5)}, host.batch);
                query.LodClip(0.001, {{1.0, 0.25, 0.0, -0.5}});
            }
            const std::string sDiff = Ref::DiffDelivery(data, query.GetIndices(), host, rec, color, log);
            if (!sDiff.empty())
                return "query " + std::to_string(nQuery) + ": " + sDiff;
        }
        return "";
    }

    /// The cloud's colour listener: hands on to the recorder of the current query.
    class CForward final : public ICldColorListener
    {
    public:
        void GetColor(double z, float& r, float& g, float& b) override { m_pTarget->GetColor(z, r, g, b); }
        void SetZRange(double zMin, double zMax) override { m_pTarget->SetZRange(zMin, zMax); }

        CRecColorListener* m_pTarget = nullptr;
    };

    mutable CForward m_forward;
    CPntCld m_cld{&m_forward};
    int m_nType = -1;
    CModelStore m_plain;
    CModelStore m_colored;
};

rc::Gen<COp> AnyOp()
{
    const auto kind = rc::gen::weightedOneOf<int>(
        {{4, rc::gen::inRange(2, 6)}, {2, rc::gen::inRange(6, 11)}, {2, rc::gen::inRange(0, c_nNumKinds)}});
    return rc::gen::build<COp>(rc::gen::set(&COp::nKind, kind),
                               rc::gen::set(&COp::nSeed, rc::gen::inRange<std::uint64_t>(0, 1000000)));
}

TEST(CPntCld_prop, Operations_SameAsModel)
{
    CheckProp(2500,
              []
              {
                  CPair pair;
                  pair.Run({0, *rc::gen::inRange<std::uint64_t>(0, 1000)});
                  pair.Run({1, *rc::gen::inRange<std::uint64_t>(0, 1000)});
                  const auto ops = *rc::gen::container<std::vector<COp>>(AnyOp());
                  for (const COp& op : ops)
                  {
                      RC_ASSERT(pair.Run(op));
                      RC_ASSERT(pair.Diff() == "");
                  }
              });
}

} // namespace
