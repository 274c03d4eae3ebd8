#include "render/view/static_mesh.h"

#include "core/base/data_limits.h"
#include "core/base/file_access.h"
#include "core/base/log.h"
#include "core/base/text_reader.h"
#include "core/services/module_manager.h"
#include "platform/gl.h"
#include "render/device/texture.h"
#include "render/device/texture_manager.h"

#include <cstdint>

namespace {

/// A vertex of a group as the file lists it.
struct MeshVertex {
    Vector3 position{0.0f, 0.0f, 0.0f};
    Vector2 texCoord{0.0f, 0.0f};
};

bool readVertices(TextReader& in, std::vector<MeshVertex>& vertices) {
    int count = 0;
    if (!in.read(count) || count < 0)
        return false;
    for (int i = 0; i < count; ++i) {
        MeshVertex vertex;
        if (!in.read(vertex.position.x) || !in.read(vertex.position.y) || !in.read(vertex.position.z) ||
            !in.read(vertex.texCoord.x) || !in.read(vertex.texCoord.y))
            return false;
        for (const float number :
             {vertex.position.x, vertex.position.y, vertex.position.z, vertex.texCoord.x, vertex.texCoord.y})
            if (!isCoordinate(static_cast<double>(number)))
                return false;
        vertices.push_back(vertex);
    }
    return true;
}

} // namespace

StaticMesh::StaticMesh(const std::string& fileName) : SceneNode(fileName), meshName(fileName) {
    logLine("Construktor Static Mesh %s \n", meshName.c_str());
    load();
    localBounds.set(Vector3(1000.0f, 1000.0f, 1000.0f), Vector3(-1000.0f, -1000.0f, -1000.0f));
}

StaticMesh::~StaticMesh() {
    logLine("Destruktor Static Mesh %s \n", meshName.c_str());
}

void StaticMesh::load() {
    const std::string path = "./mesh/" + meshName + ".msh";
    std::string text;
    if (!readWholeFile(path, text))
        return;
    TextReader in(std::move(text));
    int count = 0;
    bool good = in.read(count) && count >= 0;
    for (int group = 0; good && group < count; ++group)
        good = readGroup(in);
    if (!good) {
        logLine("Static Mesh: '%s' is not whole near line %d\n", path.c_str(), in.line());
        clear();
        return;
    }
    groupCount = count;
}

bool StaticMesh::readGroup(TextReader& in) {
    std::vector<MeshVertex> vertices;
    int triangleCount = 0;
    if (!readVertices(in, vertices) || !in.read(triangleCount) || triangleCount < 0)
        return false;
    std::vector<Vector3> positions;
    std::vector<Vector2> texCoords;
    const std::int64_t cornerCount = std::int64_t{3} * triangleCount;
    for (std::int64_t corner = 0; corner < cornerCount; ++corner) {
        int index = 0;
        if (!in.read(index) || index < 0 || static_cast<std::size_t>(index) >= vertices.size())
            return false;
        positions.push_back(vertices[static_cast<std::size_t>(index)].position);
        texCoords.push_back(vertices[static_cast<std::size_t>(index)].texCoord);
    }
    std::string textureName;
    if (!in.read(textureName))
        return false;
    triangleCounts.push_back(triangleCount);
    cornerPositions.push_back(std::move(positions));
    cornerTexCoords.push_back(std::move(texCoords));
    textures.push_back(theModuleManager->getTextureManager()->getTexture(textureName));
    return true;
}

void StaticMesh::clear() {
    groupCount = 0;
    triangleCounts.clear();
    cornerPositions.clear();
    cornerTexCoords.clear();
    textures.clear();
}

void StaticMesh::draw() {
    glPushMatrix();
    glMultMatrixf(worldMatrix.data());
    for (std::size_t group = 0; group < static_cast<std::size_t>(groupCount); ++group) {
        if (textures[group] != nullptr)
            textures[group]->bind();
        glBegin(GL_TRIANGLES);
        for (std::size_t corner = 0; corner < cornerPositions[group].size(); ++corner) {
            const Vector3& position = cornerPositions[group][corner];
            glTexCoord2f(cornerTexCoords[group][corner].x, cornerTexCoords[group][corner].y);
            glVertex3f(position.x, position.y, position.z);
        }
        glEnd();
    }
    glPopMatrix();
}
