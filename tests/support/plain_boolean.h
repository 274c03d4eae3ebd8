#pragma once

// The boolean difference without any acceleration: every face against every face, every ray against every face, the
// flood over the whole mesh. Slow, and the judge of csgMesh::carve, whose result it must equal bit for bit. It
// takes no notice of tools that were taken out at the same place before.

#include "csg/solid/csg_status.h"

class csgFace;
class csgMesh;
struct csgVector;

/// Status of a point that faces `direction`, by looking at every face of the solid in order.
csgStatus plainRay(const csgVector& point, const csgVector& direction, const csgMesh& solid);

void plainSplit(csgMesh& mesh, const csgMesh& other);
void plainClassify(csgMesh& mesh, const csgMesh& other);
void plainCarve(csgMesh& land, csgMesh& tool);
