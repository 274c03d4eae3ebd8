#include "support/playground.h"

#include "core/app/game_loader.h"
#include "core/base/data_error.h"
#include "core/scene/scene_node.h"
#include "core/teams/team_manager.h"
#include "platform/headless/headless.h"
#include "render/camera/camera.h"
#include "render/view/hud.h"
#include "support/bench.h"

namespace {

constexpr const char* slab = "1 8 -50 0 -50 0 0 50 0 -50 1 0 50 0 50 1 1 -50 0 50 0 1"
                             " -50 10 -50 0 0 50 10 -50 1 0 50 10 50 1 1 -50 10 50 0 1"
                             " 12 0 1 2 0 2 3 4 6 5 4 7 6 0 5 1 0 4 5 1 6 2 1 5 6 2 7 3 2 6 7 3 4 0 3 7 4 earth\n";

} // namespace

void putFlatLevel() {
    memory_files::clear();
    memory_files::put("./csg/slab.csg", slab);
    memory_files::put("./level/flat.lev", "1 slab 1 1 1 0 0 0 0 0 0");
    memory_files::put("teams/teams.tm", "1 A 1");
    memory_files::putForEnding(".tm", "2 Ann Bo 0.25 0.5 1");
}

void playFlatLevel(const Bench& bench) {
    endRound();
    beginRoundData();
    GameLoader loader;
    SceneNode* const scene = loader.loadLevel("flat");
    if (scene == nullptr) {
        const std::string silence = "no fault was said";
        reportDataError("flat", silence);
        require(headless::messageBoxes().back().text.find(silence) == std::string::npos,
                "a fault says why a level cannot be played");
        require(theModuleManager->getSceneRoot() == nullptr && theModuleManager->getTeamManager() == nullptr,
                "nothing of it is left");
        return;
    }
    require(theModuleManager->getTeamManager()->getTeamCount() > 0, "there is a team");
    for (int frame = 0; frame < 2; ++frame)
        bench.services().frame(16);
    Bench::drawn([scene] {
        if (Camera* const camera = theModuleManager->getCamera()) {
            camera->apply();
            scene->render(camera);
        }
        theModuleManager->getHud()->draw();
    });
    endRound();
}
