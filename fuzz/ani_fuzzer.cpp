#include "render/view/milkshape_model.h"
#include "support/bench.h"
#include "support/model_file.h"

namespace {

std::string jointedModel() {
    ModelFile file;
    file.vertices = {{{6, 0, 0}, 1}, {{7, 0, 0}, 0}, {{6, 1, 0}, -1}};
    file.indices = {0, 1, 2};
    file.joints = {{"root", "", {0, 0, 0}, {0, 0, 0}, {{0, {0, 0, 0}}, {1, {1, 0, 0}}}, {}},
                   {"tip", "root", {0, 0, 0}, {5, 0, 0}, {}, {{0, {0, 0, 0}}, {0.5f, {0, 1, 0}}}}};
    return file.bytes();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string modelBytes = jointedModel();
    const Bench bench;
    memory_files::put("./mesh/m.ms3d", modelBytes);
    memory_files::put("./mesh/m.ani", data, size);
    MilkShapeModel model("model");
    require(model.load("m"), "a model loads whatever its clips are");
    model.setAnimation("walk");
    for (const unsigned milliseconds : {0u, 16u, 100u, 3000u, 16u}) {
        bench.services().tick(milliseconds);
        model.update();
        require(model.getAnimationTime() >= 0.0f, "a clip's time does not run backwards");
        Bench::drawn([&model] { model.draw(); });
    }
    model.setAnimation("idle");
    model.update();
    return 0;
}
