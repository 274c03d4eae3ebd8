#include "core/module_manager.h"

#include "core/input_control.h"
#include "core/log.h"
#include "core/scene_node.h"
#include "core/sound_control.h"
#include "core/team_manager.h"
#include "core/timer.h"
#include "game/collision_detection.h"
#include "render/camera.h"
#include "render/hud.h"
#include "render/renderer.h"
#include "render/texture_loader.h"
#include "render/texture_manager.h"

ModuleManager* theModuleManager = nullptr;

namespace {

/// Destroys a service while its slot still names it, since destructors reach one another through the registry.
template <class Service>
void destroyService(Service*& slot) {
    delete slot;
    slot = nullptr;
}

} // namespace

ModuleManager::ModuleManager() {
    logLine("ModuleManager Konstruktor\n");
}

ModuleManager::~ModuleManager() {
    logLine("ModuleManager Destruktor\n");
    destroyService(soundControl);
    destroyService(hud);
    destroyService(sceneRoot);
    destroyService(teamManager);
    destroyService(textureLoader);
    destroyService(textureManager);
    destroyService(renderer);
    destroyService(camera);
    destroyService(inputControl);
    destroyService(timer);
    destroyService(collisionDetection);
}
