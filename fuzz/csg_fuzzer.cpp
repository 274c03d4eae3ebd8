#include "csg/land/csg_object.h"
#include "csg/solid/csg_file.h"
#include "render/device/renderer.h"
#include "support/bench.h"

#include <cmath>

namespace {

constexpr const char* tetrahedron =
    "1 4 -1 -1 -1 0 0 2 -1 -1 1 0 -1 2 -1 0 1 -1 -1 2 1 1 4 0 2 1 0 1 3 1 2 3 0 3 2 tool";
/// A larger solid is not cut, for speed.
constexpr std::size_t mostCut = 24;

void requireReadBack(const csgObject& solid) {
    csgMeshData again;
    TextFault fault;
    require(readCsgText(writeCsgText(solid, solid.getTextureNames()), again, fault) == csgReadResult::ok,
            "what was read can be written and read");
    csgMesh copy;
    copy.build(again);
    require(copy.countFaces() == solid.countFaces(), "with every face");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Bench bench;
    memory_files::put("./csg/solid.csg", data, size);
    memory_files::put("./csg/tool.csg", tetrahedron);
    csgObject solid;
    if (!solid.load("./csg/solid")) {
        require(Bench::logLines() > 1, "the log says why");
        require(solid.getVertices().empty() && solid.getParts().empty(), "nothing is left of it");
        return 0;
    }
    require(solid.getTextures().size() == solid.getParts().size(), "a texture for each part");
    for (const auto& vertex : solid.getVertices())
        require(isInReach(vertex->position), "every corner is in reach");
    requireReadBack(solid);
    for (const RenderMode mode : {RenderMode::immediate, RenderMode::vertexArray, RenderMode::vertexBuffer}) {
        theModuleManager->getRenderer()->renderMode = mode;
        solid.rebuildArrays();
        Bench::drawn([&solid] { solid.draw(); });
    }
    if (solid.countFaces() <= mostCut) {
        csgObject tool;
        tool.load("./csg/tool");
        solid.subtract(tool);
        Bench::drawn([&solid] { solid.draw(); });
    }
    return 0;
}
