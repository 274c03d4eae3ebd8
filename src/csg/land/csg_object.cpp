#include "csg/land/csg_object.h"

#include "core/base/log.h"
#include "core/services/module_manager.h"
#include "core/services/timer.h"
#include "csg/solid/csg_file.h"
#include "platform/wgl_extension.h"
#include "render/device/texture_manager.h"

csgObject::csgObject() : SceneNode("<no name>"), collision(theModuleManager->getCollisionDetection()) {
    bufferSupport = hasExtension("GL_ARB_vertex_buffer_object");
    if (bufferSupport) {
        glGenBuffersARB = getExtension<PFNGLGENBUFFERSARBPROC>("glGenBuffersARB");
        glBindBufferARB = getExtension<PFNGLBINDBUFFERARBPROC>("glBindBufferARB");
        glBufferDataARB = getExtension<PFNGLBUFFERDATAARBPROC>("glBufferDataARB");
        glDeleteBuffersARB = getExtension<PFNGLDELETEBUFFERSARBPROC>("glDeleteBuffersARB");
    }
}

csgObject::~csgObject() {
    releaseArrays();
}

bool csgObject::load(const std::string& path) {
    const std::string fileName = path + ".csg";
    csgMeshData data;
    TextFault fault{0, "the solid cannot be opened"};
    const csgReadResult result = readCsgFile(fileName, data, fault);
    if (result == csgReadResult::cannotOpen)
        logLine(" csgObject: Could not open csg file '%s' \n", fileName.c_str());
    else if (result == csgReadResult::malformed)
        logLine(" csgObject: Bad csg file '%s': line %d, %s \n", fileName.c_str(), fault.line, fault.text.c_str());
    if (result != csgReadResult::ok) {
        loadFault = fault;
        data.parts.clear();
    }
    build(data);

    textures.clear();
    textureNames.clear();
    TextureManager* const manager = theModuleManager->getTextureManager();
    for (const csgMeshData::Part& part : data.parts) {
        textureNames.push_back(part.texture);
        textures.push_back(manager != nullptr ? manager->getTexture(part.texture) : nullptr);
    }
    return result == csgReadResult::ok;
}

void csgObject::subtract(csgObject& tool) {
    if (!canBeCarvedBy(tool))
        return;
    const auto start = theModuleManager->getTimer()->getTickCount();
    carve(tool);
    const auto elapsed = theModuleManager->getTimer()->getTickCount() - start;
    computeNormals();
    rebuildArrays();
    logLine(" csgObject: Needed time for CSG boolean Operation %ld \n", static_cast<long>(elapsed));
}

csgObject* csgObject::asCsgNode() {
    return this;
}

void csgObject::boundsChanged() {
    const csgBounds box = getBounds().value_or(csgBounds());
    const auto toSingle = [](const csgVector& v) {
        return Vector3(static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z));
    };
    localBounds.set(toSingle(box.min), toSingle(box.max));
}
