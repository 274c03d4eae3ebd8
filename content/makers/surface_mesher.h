#pragma once

#include "field.h"
#include "triangle_mesh.h"

// Turns a scalar field into a closed triangle mesh. polygonise cuts a lattice of tetrahedra, which is closed and
// two-sided everywhere whatever the field does, but leaves thin triangles; Remesher (remesher.h) then makes them even.

/// The box that is sampled. The field must be positive on its faces.
struct SampleBox {
    Vec3 low;
    Vec3 high;
    double cell; ///< edge of a lattice cube, world units
};

/// The zero surface of the field, facing the positive side.
TriangleMesh polygonise(const Field& field, const SampleBox& box);
