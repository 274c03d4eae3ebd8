#include "render/view/milkshape_model.h"
#include "support/bench.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Bench bench;
    memory_files::put("./mesh/m.ms3d", data, size);
    memory_files::put("./mesh/m.ani", "2 a 0 5 b b 5 9 a");
    MilkShapeModel model("model");
    if (model.load("m")) {
        for (const unsigned milliseconds : {16u, 400u, 300u}) {
            bench.services().tick(milliseconds);
            model.update();
            Bench::drawn([&model] { model.draw(); });
        }
    } else {
        require(model.getVertices().empty() && model.getJoints().empty() && model.getGroups().empty(),
                "nothing is left of a refused model");
    }
    return 0;
}
