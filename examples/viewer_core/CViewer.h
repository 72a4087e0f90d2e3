#ifndef EXAMPLES_CVIEWER_H
#define EXAMPLES_CVIEWER_H

#include "CCamera.h"

#include <utility>

class CPntCld;
class CVertexBuffer;

/// Chooses, frame by frame, the points of a cloud that a picture needs.
///
/// What the camera sees is cut into bands, each twice as deep as the one before, and each band is asked for
/// at the spacing that its near end shows as so many pixels. A point at the border of two bands may come in
/// both.
class CViewer
{
public:
    /// @param cld  kept, not owned; has an octree.
    explicit CViewer(const CPntCld& cld);

    /// Fills the buffer anew. Where not everything fits, the points get sparser until it does; while
    /// three quarters of it stay empty, they get denser by a step a frame.
    ///
    /// @return false where even the sparsest points do not fit; the buffer is then full.
    bool FillFrame(const CCamera& camera, CVertexBuffer& buffer);

    /// Spacing of the points in the last frame, pixels.
    double GetSpacing() const { return m_dSpacing; }

    /// Bands of the last frame.
    int GetNumBands() const { return m_nNumBands; }

private:
    std::pair<double, double> CalcDepths(const CCamera& camera) const;
    bool TryFillFrame(const CCamera& camera, CVertexBuffer& buffer);

    const CPntCld& m_cld;
    double m_dSpacing = 1.0;
    int m_nNumBands = 0;
    bool m_bRoom = false; // the last frame left three quarters of the buffer empty
};

#endif
