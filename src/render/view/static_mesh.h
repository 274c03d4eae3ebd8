#pragma once

// A rigid, textured triangle mesh from "./mesh/" + name + ".msh": groups, each with its own vertices, triangles and
// texture. It has neither normals nor colours, and takes on whatever light and colour are set.
//
// A file that is not whole (a count below 0, an index outside its group's vertices, an item missing or not a number, a
// number beyond largestCoordinate) leaves the mesh empty, after one line in the log that names the file, the line and
// the fault; so does a missing file, without the line.

#include "core/scene/scene_node.h"
#include "render/math/vector2.h"

#include <vector>

class TextReader;
class Texture;

class StaticMesh : public SceneNode {
public:
    explicit StaticMesh(const std::string& fileName);
    ~StaticMesh() override;

    void draw() override;

    int getGroupCount() const { return groupCount; }
    const std::vector<int>& getTriangleCounts() const { return triangleCounts; }
    const std::vector<Vector3>& getCornerPositions(int group) const {
        return cornerPositions[static_cast<std::size_t>(group)];
    }

private:
    void load();
    [[nodiscard]] bool readGroup(TextReader& in);
    void clear();

    std::string meshName;
    int groupCount = 0;
    std::vector<int> triangleCounts;
    /// Three a triangle, in drawing order.
    std::vector<std::vector<Vector3>> cornerPositions;
    std::vector<std::vector<Vector2>> cornerTexCoords;
    std::vector<Texture*> textures;
};
