#pragma once

// Reading and writing of .csg files: white-space separated items, a part count and for each part its corner records
// (x y z u v), its triangles (three indices into them) and one texture name.
//
// Counts are not trusted: nothing is allocated for them, records are read one by one. A missing item, one that is no
// number, a number beyond largestCoordinate, an index without a record, more than csgMostFaces faces and more than
// csgMostFacesAtCorner of them round one place each reject the whole file. A number too close to zero for its type is
// 0. Counts of zero or less mean no records. What follows the last part is ignored.

#include "core/base/data_limits.h"
#include "core/base/text_reader.h"
#include "csg/solid/csg_mesh_data.h"

#include <string>
#include <vector>

class csgMesh;

/// Faces of a file: some 600 MB of land.
inline constexpr std::size_t csgMostFaces = 2'000'000;
/// Faces with a corner at the same place. The boxes of a fan's needles all meet, so that a crater at its hub asks each
/// of them about each other: with 256 faces it takes some 15 ms, with 10,000 some 8 s.
inline constexpr std::size_t csgMostFacesAtCorner = 256;

/// Whether a corner may stand there.
inline bool isInReach(const csgVector& position) {
    return isCoordinate(position.x) && isCoordinate(position.y) && isCoordinate(position.z);
}

enum class csgReadResult {
    ok,
    cannotOpen, ///< missing, unreadable, or not a file
    malformed
};

/// Reads a file. When it is malformed, `fault` receives what is wrong and where, in a few words; `data` is then
/// unusable.
[[nodiscard]] csgReadResult readCsgFile(const std::string& fileName, csgMeshData& data, TextFault& fault);
/// The same for text already in memory; never cannotOpen.
[[nodiscard]] csgReadResult readCsgText(const std::string& text, csgMeshData& data, TextFault& fault);

/// The text of a file that describes the mesh; reading it back gives the same faces in the same order, to the last bit.
/// Faces of at most 1e-5, as carving puts them into its gaps and scaling down makes them, are written but not read
/// back. Vertices without faces are left out. `textures` has a name for each part.
std::string writeCsgText(const csgMesh& mesh, const std::vector<std::string>& textures);
