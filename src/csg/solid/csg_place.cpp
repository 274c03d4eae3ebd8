#include "csg/solid/csg_mesh.h"

#include "render/math/matrix.h"

namespace {

/// The point under a matrix, in double precision but for the matrix itself.
csgVector transformed(const csgVector& p, const Matrix& m) {
    const auto row = [&](int r) {
        return static_cast<double>(m[r]) * p.x + static_cast<double>(m[4 + r]) * p.y +
               static_cast<double>(m[8 + r]) * p.z + static_cast<double>(m[12 + r]);
    };
    return {row(0), row(1), row(2)};
}

} // namespace

void csgMesh::translate(double dx, double dy, double dz) {
    if (!bounds)
        return;
    grid.clear();
    craters.clear();
    for (const auto& vertex : vertices) {
        vertex->position += csgVector{dx, dy, dz};
        grid.add(vertex->position);
    }
    refreshFaces();
    bounds->translate(dx, dy, dz);
    boundsChanged();
}

void csgMesh::rotateX(double angle) {
    Matrix matrix;
    matrix.rotationX(static_cast<float>(angle));
    transformBy(matrix);
}

void csgMesh::rotateY(double angle) {
    Matrix matrix;
    matrix.rotationY(static_cast<float>(angle));
    transformBy(matrix);
}

void csgMesh::rotateZ(double angle) {
    Matrix matrix;
    matrix.rotationZ(static_cast<float>(angle));
    transformBy(matrix);
}

void csgMesh::scale(double sx, double sy, double sz) {
    Matrix matrix;
    matrix.setScale(sx, sy, sz);
    transformBy(matrix);
}

void csgMesh::transformBy(const Matrix& matrix) {
    if (!bounds)
        return;
    grid.clear();
    craters.clear();
    for (const auto& vertex : vertices) {
        vertex->position = transformed(vertex->position, matrix);
        grid.add(vertex->position);
    }
    refreshFaces();
    rebuildBounds();
}

void csgMesh::refreshFaces() {
    for (csgFaceList& part : parts) {
        for (const auto& face : part)
            face->refresh();
        part.rebuildRuns();
    }
}

void csgMesh::rebuildBounds() {
    bounds.reset();
    for (const auto& vertex : vertices) {
        if (bounds)
            bounds->merge(vertex->position);
        else
            bounds.emplace(vertex->position);
    }
    boundsChanged();
}
