#include "render/view/static_mesh.h"
#include "support/bench.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Bench bench;
    memory_files::put("./mesh/m.msh", data, size);
    StaticMesh mesh("m");
    const auto groups = static_cast<std::size_t>(mesh.getGroupCount());
    require(groups == mesh.getTriangleCounts().size(), "as many groups as counts");
    for (int group = 0; group < mesh.getGroupCount(); ++group)
        require(mesh.getCornerPositions(group).size() ==
                    std::size_t{3} *
                        static_cast<std::size_t>(mesh.getTriangleCounts()[static_cast<std::size_t>(group)]),
                "three corners a triangle");
    mesh.update();
    Bench::drawn([&mesh] { mesh.draw(); });
    return 0;
}
