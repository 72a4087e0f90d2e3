#ifndef ANALYSIS_OUTLINE_CPATHVIEW_H
#define ANALYSIS_OUTLINE_CPATHVIEW_H

#include <zor3geom/TPlanBox.h>

#include <array>
#include <cstddef>
#include <cstdint>

/// What the segments of a path hide from one place, in plan view.
///
/// The directions from the place are parted into sectors. Where consecutive segments reach from one side of
/// a sector to the other, nothing behind them is seen in it: a line from the place to anywhere there meets
/// them. The view tells what is hidden for certain; what it does not tell may be hidden nevertheless.
///
/// Everything is given relative to the place, compact units, whole numbers below 2^33. No segment may hold
/// the place.
class CPathView
{
public:
    using TBox = zor::geom::TPlanBox<double>;

    /// Forgets all segments: nothing is hidden.
    void Clear() noexcept;

    /// @param i  number of the segment on its path, whose segments i and i + 1 share a point: it is best if
    ///           segments of a row come after each other, the last of them first.
    void Add(std::size_t i, double dFromX, double dFromY, double dToX, double dToY) noexcept;

    bool Hides(double dx, double dy) const noexcept;

    /// @return true only if every place of the box is hidden.
    /// @param box  of whole numbers or not.
    bool Hides(const TBox& box) const noexcept;

    /// @return the square of the distance beyond which everything is hidden, infinite where there is none.
    double CalcFarthest() const noexcept;

private:
    /// A place, and its direction in sectors: from 0 to below c_nNumSectors, counter-clockwise from east.
    struct CSeen
    {
        double dx;
        double dy;
        double dSquare; // of the distance
        double dSector;
    };

    static constexpr int c_nNumSectors = 128;

    static CSeen See(double dx, double dy) noexcept;
    void Draw(const CSeen& to) noexcept;
    void Cross(const CSeen& to, int nBorder, bool bUp) noexcept;

    std::array<double, c_nNumSectors> m_adHidden; // squares of the distances from which on all is hidden
    CSeen m_last{};                               // where the chain of segments has come to
    std::size_t m_nLast = 0;                      // number of its last segment
    bool m_bChain = false;                        // there is one
    int m_nSector = 0;                            // the sector it is in
    int m_nEntered = 0;       // by which side: -1 the lower, 1 the upper, 0 it began there
    double m_dFarthest = 0.0; // square of its largest distance since
};

#endif
