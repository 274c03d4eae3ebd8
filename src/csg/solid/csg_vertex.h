#pragma once

#include "csg/solid/csg_status.h"
#include "csg/solid/csg_vector.h"

#include <vector>

class csgFace;

/// One corner shared by the faces of a solid. Owned by the solid; faces enter and leave themselves. Neither list owns.
class csgVertex {
public:
    csgVector position;
    csgVector normal; ///< shading normal; (0,0,0) until computed
    csgStatus status = csgStatus::unclassified;
    std::vector<csgVertex*> adjacent; ///< joined by a face edge; filled only during a classification
    std::vector<csgFace*> faces;      ///< every face that uses this vertex, in the order of their creation

    explicit csgVertex(const csgVector& at, csgStatus initialStatus = csgStatus::unclassified)
        : position(at), status(initialStatus) {}

    bool equals(const csgVertex& other) const { return position.coincides(other.position); }

    /// Neither list takes a pointer twice.
    void addAdjacent(csgVertex* vertex);
    void addFace(csgFace* face);
    void removeFace(csgFace* face);

    /// True when a face came, went or moved since the normal was computed.
    bool isNormalStale() const { return normalStale; }
    void markNormalStale() { normalStale = true; }
    /// The faces' normals weighted by their areas, normalised; (0,0,0) without faces.
    void computeNormal();

private:
    bool normalStale = true;
};
