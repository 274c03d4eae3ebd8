#pragma once

// A closed triangle mesh in double precision: the geometry of a destructible solid, without scene, textures or drawing.
//
// The mesh owns its vertices and faces; faces share vertices, and no two vertices made by adding coincide (1e-5). Faces
// are grouped into parts (one texture each, kept by whoever derives). Every change keeps the vertex index and the boxes
// of the face lists in step. Vertices that no face uses any more stay in the list and may be used again. A mesh that
// holds no vertices has no bounds; placing it does nothing, and nothing can be carved with it or from it. Statuses and
// adjacency mean something only while one carve runs.

#include "csg/solid/csg_bounds.h"
#include "csg/solid/csg_classify.h"
#include "csg/solid/csg_face_list.h"
#include "csg/solid/csg_tex_coord.h"
#include "csg/solid/csg_vector.h"
#include "csg/solid/csg_vertex.h"
#include "csg/solid/csg_vertex_grid.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

class csgSegment;
class Matrix;
struct csgMeshData;

class csgMesh {
public:
    /// What the last carve did to this mesh.
    struct CarveStats {
        std::size_t facesBefore = 0;
        std::size_t facesAfter = 0;
        std::size_t cuts = 0;      ///< of faces by faces of the tool
        std::size_t removed = 0;   ///< dropped for lying inside the tool
        std::size_t adopted = 0;   ///< taken over from the tool
        std::size_t tooSmall = 0;  ///< pieces dropped for their area, in both meshes
        std::size_t overruled = 0; ///< flooded statuses that rays disproved
        std::size_t keptUncut = 0; ///< cuts left undone because the pieces kept shrinking
        std::size_t mended = 0;    ///< faces put in where dropped pieces had left a gap
        std::size_t joined = 0;    ///< vertices taken out that the shape did not need
        bool isRepeat = false;     ///< the same tool at the same place as before: nothing was done
    };

    /// Rough: each mesh is split once along the other, and the gaps that arise are left. Closed: this mesh is split a
    /// second time, and what gaps are left then are mended. Rough is for measuring what the rest is worth.
    enum class CarveFinish { rough, closed };

    csgMesh() = default;
    virtual ~csgMesh();
    csgMesh(const csgMesh&) = delete;
    csgMesh& operator=(const csgMesh&) = delete;

    const std::vector<std::unique_ptr<csgVertex>>& getVertices() const { return vertices; }
    const csgParts& getParts() const { return parts; }
    csgFaceList& getPart(std::size_t part) { return parts[part]; }
    /// Box of all vertices; empty without vertices.
    const std::optional<csgBounds>& getBounds() const { return bounds; }
    std::size_t countFaces() const;

    /// Replaces everything by the mesh that the data describe. Drops faces whose corners coincide or that are too
    /// small.
    void build(const csgMeshData& data);

    void translate(double dx, double dy, double dz);
    /// Radians.
    void rotateX(double angle);
    void rotateY(double angle);
    void rotateZ(double angle);
    void scale(double sx, double sy, double sz);

    /// The first vertex of the list that coincides with v, or null.
    csgVertex* findVertex(const csgVertex& v) const;
    /// The vertex that coincides with v; if there is none, a new one at v's position with status 1.
    csgVertex& addVertex(const csgVertex& v);
    csgFaceList& addPart();
    /// Appends the face (a, b, c); null when corners coincide or the area is 1e-5 or less.
    csgFace* makeFace(csgFaceList& list, csgVertex& a, csgVertex& b, csgVertex& c);
    csgFace* makeTexturedFace(csgFaceList& list, csgVertex& a, csgVertex& b, csgVertex& c, const csgTexCoord& ta,
                              const csgTexCoord& tb, const csgTexCoord& tc);
    /// The caller owns the face from now on.
    static std::unique_ptr<csgFace> removeFaceAt(csgFaceList& list, std::size_t index);
    /// Takes a copy of another mesh's face into part 0. Null when it is too small, or when this mesh has no part: then
    /// the face has nowhere to go and nothing changes.
    csgFace* adoptFace(const csgFace& foreign);
    /// Faces must be gone first: they unregister from their corners.
    void clearVertices();
    void clearParts();

    /// A vertex on the cut, status 4; one that coincides with an existing vertex is that vertex, its status untouched.
    csgVertex& newCutVertex(const csgVector& position);
    /// Texture coordinate of a point of the face; that of corner 0 when the point stands on it.
    static csgTexCoord interpolateTexture(const csgFace& face, const csgVector& position);
    /// Replaces the face list[index] by two to five pieces along the overlap of s (of that face) and t (of the other
    /// solid's face). Returns the replaced face, no longer in the list; null when the list is unchanged.
    [[nodiscard]] std::unique_ptr<csgFace> cutFace(csgFaceList& list, std::size_t index, const csgSegment& s,
                                                   const csgSegment& t);
    /// What became of a face that was to be cut.
    struct Pieces {
        std::size_t made = 0;
        std::size_t wanted = 0; ///< by the pattern; those too small to be faces are not made
    };
    /// The part of cutFace that appends the pieces; the face itself stays.
    [[nodiscard]] Pieces appendPieces(csgFaceList& list, const csgFace& face, const csgSegment& s, const csgSegment& t);

    /// Splits the faces that cross faces of the other mesh along its surface.
    void splitAgainst(const csgMesh& other);
    /// Gives every face its status (2 to 5) with respect to the other mesh.
    void classifyAgainst(const csgMesh& other);
    /// Both hold something, and what is adopted has a part to go to.
    bool canBeCarvedBy(const csgMesh& tool) const { return bounds && tool.bounds && !parts.empty(); }
    /// Makes this mesh the difference of itself and the tool. The tool is used up. Normals are left to computeNormals.
    void carve(csgMesh& tool, CarveFinish finish = CarveFinish::closed);
    /// Recomputes the normal of every vertex whose faces have changed since the last time.
    void computeNormals();

    const CarveStats& getCarveStats() const { return stats; }
    /// Whether a tool met faces too long for it since the mesh was built.
    bool hasBeenDivided() const { return divided; }

protected:
    /// Called after every change of the bounds.
    virtual void boundsChanged() {}

private:
    friend class csgSplitter;
    friend class csgDivider;
    friend class csgFlood;
    friend class csgJoiner;
    friend class csgMender;

    csgVertex& appendVertex(const csgVector& position, csgStatus status);
    void transformBy(const Matrix& matrix);
    void refreshFaces();
    void rebuildBounds();

    /// Remembers what is taken out, and where; false when it was taken out there before.
    [[nodiscard]] bool noteCrater(const csgMesh& tool);
    void removeCarvedFaces(const csgBounds& toolBox);
    void adoptCarvedFaces(csgMesh& tool);
    void resetClassification(const std::vector<csgVertex*>& touched, std::size_t oldVertices);

    std::vector<std::unique_ptr<csgVertex>> vertices;
    csgParts parts;
    std::optional<csgBounds> bounds;
    csgVertexGrid grid;
    /// Where a tool was taken out.
    struct Crater {
        csgVector centre;
        std::size_t shape; ///< index into `toolShapes`
    };
    std::vector<Crater> craters;
    std::vector<std::vector<csgVector>> toolShapes; ///< vertices of the tools so far, from the centres of their boxes
    CarveStats stats;
    bool divided = false; ///< craters here are worth tidying up after
};
