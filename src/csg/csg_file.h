#pragma once

// Reading and writing of .csg files: white-space separated items, a part count and for each part its corner records
// (x y z u v), its triangles (three indices into them) and one texture name.
//
// Counts are not trusted: nothing is allocated for them, records are read one by one. A missing item, one that is no
// number, a number beyond largestCoordinate, an index without a record and more than csgMostFaces faces each reject
// the whole file. Counts of zero or less mean no records. What follows the last part is ignored.

#include "core/data_limits.h"
#include "core/text_reader.h"
#include "csg/csg_mesh_data.h"

#include <string>
#include <vector>

class csgMesh;

/// Faces of a file: twice what a level has after hundreds of craters. Faces that share a corner take time with the
/// square of their number.
inline constexpr std::size_t csgMostFaces = 100'000;

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
csgReadResult readCsgFile(const std::string& fileName, csgMeshData& data, TextFault& fault);
/// The same for text already in memory; never cannotOpen.
csgReadResult readCsgText(const std::string& text, csgMeshData& data, TextFault& fault);

/// The text of a file that describes the mesh; reading it back gives the same faces in the same order, to the last bit.
/// Faces of at most 1e-5, as carving puts them into its gaps and scaling down makes them, are written but not read
/// back. Vertices without faces are left out. `textures` has a name for each part.
std::string writeCsgText(const csgMesh& mesh, const std::vector<std::string>& textures);
