#pragma once

// The destructible solid as a node of the scene: a mesh with a texture for each part, drawn in the renderer's mode and
// met by everything that moves.
//
// Life: constructed empty (a GL context must be current), loaded once, placed, its drawing arrays built; from then on
// only `subtract` changes it. A tool solid is loaded, translated, used once as the argument of `subtract` and dropped;
// it is never drawn. The node's own transform stays the identity: placing moves the vertices, and the local box
// follows. An object whose load failed is empty: it has no bounds and a local box of (0,0,0), placing it does nothing,
// and subtracting from it or with it does nothing. Textures belong to the texture manager.

#include "core/base/text_reader.h"
#include "core/scene/scene_node.h"
#include "csg/solid/csg_mesh.h"
#include "platform/gl.h"

#include <string>
#include <vector>

class CollisionDetection;
class Texture;

class csgObject : public SceneNode, public csgMesh {
public:
    csgObject();
    ~csgObject() override;

    /// Reads the file `path` + ".csg", replacing what the object held. False, and the object is empty, when the file
    /// cannot be opened or is malformed; one line of the log says why, and so does the fault.
    [[nodiscard]] bool load(const std::string& path);
    /// What was wrong with the file at the last load that failed.
    const TextFault& getLoadFault() const { return loadFault; }
    /// Makes this solid the difference of itself and the tool, refreshes normals and drawing arrays. The tool is used
    /// up.
    void subtract(csgObject& tool);

    /// Makes what is drawn anew from the mesh as it is: arrays, and buffers where the driver has them.
    void rebuildArrays();
    void releaseArrays();
    /// Whether the driver's extension string holds `extension` as a whole word.
    static bool hasExtension(const std::string& extension);

    /// One for each part; null where the texture manager has none of that name.
    const std::vector<Texture*>& getTextures() const { return textures; }
    /// As the file names them, whether or not such textures exist.
    const std::vector<std::string>& getTextureNames() const { return textureNames; }

    int getCollisionType() override;
    void collide(CollisionPacket* packet) override;
    void draw() override;
    csgObject* asCsgNode() override;

private:
    TextFault loadFault;

    void boundsChanged() override;
    void releaseBuffers();
    void fillBuffers();
    void drawImmediate() const;
    void drawBuffers() const;
    void drawArrays() const;
    void drawParts() const;

    CollisionDetection* collision;
    std::vector<Texture*> textures;
    std::vector<std::string> textureNames;
    Matrix transform;

    PFNGLGENBUFFERSARBPROC glGenBuffersARB = nullptr;
    PFNGLBINDBUFFERARBPROC glBindBufferARB = nullptr;
    PFNGLBUFFERDATAARBPROC glBufferDataARB = nullptr;
    PFNGLDELETEBUFFERSARBPROC glDeleteBuffersARB = nullptr;
    GLuint positionBuffer = 0;
    GLuint texCoordBuffer = 0;
    GLuint normalBuffer = 0;
    bool bufferSupport = false;
    /// One entry for each corner of each face, in the order of parts, faces and corners.
    std::vector<double> positionArray; ///< x y z
    std::vector<double> texCoordArray; ///< u v
    std::vector<double> normalArray;   ///< x y z of the vertex normal
};
