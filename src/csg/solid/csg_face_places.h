#pragma once

// Where faces stand in the lists of their mesh, for steps that put in and take out single faces anywhere. Lists get
// holes where faces are taken out; whoever does so compacts them in the end. Cost of each operation: constant.

#include "csg/solid/csg_face_list.h"
#include "csg/solid/csg_tex_coord.h"

#include <array>
#include <cstddef>
#include <memory>
#include <unordered_map>

class csgVertex;

class csgFacePlaces {
public:
    void clear() { places.clear(); }
    void add(csgFaceList& list, std::size_t index) { places[list[index]] = {&list, index}; }

    bool contains(const csgFace* face) const { return places.contains(face); }
    /// Of a face that is contained.
    csgFaceList& listOf(const csgFace& face) const { return *places.at(&face).list; }

    /// A new face at the end of the list, whatever its size.
    csgFace& append(csgFaceList& list, const std::array<csgVertex*, 3>& corners, const std::array<csgTexCoord, 3>& tex);
    /// Out of its list, which keeps a hole. The face must be contained.
    std::unique_ptr<csgFace> take(const csgFace& face);

private:
    struct Place {
        csgFaceList* list;
        std::size_t index;
    };
    std::unordered_map<const csgFace*, Place> places; ///< looked up, never walked: the order is that of addresses
};
