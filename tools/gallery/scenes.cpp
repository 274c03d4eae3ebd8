#include "scenes.h"

#include "stage.h"

#include "core/app/game_loader.h"
#include "core/services/input_control.h"
#include "core/services/module_manager.h"
#include "core/teams/team.h"
#include "core/teams/team_manager.h"
#include "csg/land/csg_object.h"
#include "game/armoury/projectile.h"
#include "game/armoury/rocket.h"
#include "game/collision/collision_detection.h"
#include "game/collision/collision_packet.h"
#include "game/play/weapon.h"
#include "game/play/worm.h"
#include "platform/crt_random.h"
#include "platform/win32.h"
#include "render/camera/camera.h"
#include "render/view/milkshape_model.h"

#include <array>
#include <iterator>

namespace {

struct View {
    const char* name;
    Vector3 direction; ///< from the middle to the eye
};

const std::array<View, 4> sides = {{{"front", {0.3f, 0.25f, 1.0f}},
                                    {"left", {1.0f, 0.25f, 0.2f}},
                                    {"back", {-0.3f, 0.25f, -1.0f}},
                                    {"above", {0.4f, 1.0f, 0.5f}}}};

/// How far away, in half diagonals, an eye must stand to see all of a box.
constexpr float distanceFactor = 2.4f;

/// Around the vertices alone: a model's own box also holds the origin and room to move.
BoundingBox boxOf(const MilkShapeModel& model) {
    BoundingBox box;
    for (const ModelVertex& vertex : model.getVertices())
        box.merge(BoundingBox(vertex.position, vertex.position));
    return box;
}

void shootFromAllSides(Stage& stage, SceneNode& node, const BoundingBox& box, const std::string& name) {
    const Vector3 middle = (box.min + box.max) * 0.5f;
    const float distance = (box.max - box.min).length() * 0.5f * distanceFactor;
    for (const View& view : sides)
        stage.shoot(node, middle + normalized(view.direction) * distance, middle, name + "-" + view.name);
}

/// Ten craters of the rocket's size where vertical rays meet the land.
void cutCraters(SceneNode& scene) {
    // Only its crater cutting is of use here; it never flies.
    Projectile digger(Vector3(0, 0, 0), Vector3(0, 0, 0), nullptr, 0);
    CollisionPacket ray;
    ray.radius = Vector3(1, 1, 1);
    for (int craters = 0, tries = 0; craters < 10 && tries < 1000; ++tries) {
        const auto coordinate = [] {
            return 260.0f * (static_cast<float>(crtRand()) / static_cast<float>(crtRandMax) - 0.5f);
        };
        ray.worldPosition = Vector3(coordinate(), 200.0f, coordinate());
        ray.worldVelocity = Vector3(0, -300.0f, 0);
        theModuleManager->getCollisionDetection()->moveToContact(&ray, &scene);
        if (!ray.foundCollision)
            continue;
        const Vector3 centre = ray.worldPosition;
        digger.carveCrater("./csg/sphere", BoundingBox(centre - 10.0f, centre + 10.0f), centre, &scene);
        ++craters;
    }
}

Worm* firstWorm() {
    return theModuleManager->getTeamManager()->getTeams().back()->getCurrentWorm();
}

/// The worm that stands furthest from the middle: it has the sea behind it.
Worm* outermostWorm() {
    Worm* outermost = firstWorm();
    const auto away = [](const Worm* worm) {
        const Vector3 at = worm->getWorldPosition();
        return at.x * at.x + at.z * at.z;
    };
    for (const Team* const team : theModuleManager->getTeamManager()->getTeams())
        for (Worm* const worm : team->getWorms())
            if (away(worm) > away(outermost))
                outermost = worm;
    return outermost;
}

/// A worm's label before the sea.
void shootLabel(Stage& stage, SceneNode& scene, const std::string& name) {
    const Vector3 at = outermostWorm()->getWorldPosition();
    const Vector3 outward = normalized(Vector3(at.x, 0, at.z));
    stage.shoot(scene, at + outward * -30.0f + Vector3(0, 40, 0), at + Vector3(0, 8, 0), name + "-label");
}

void shootLevelViews(Stage& stage, SceneNode& scene, const std::string& name) {
    const Vector3 middle(0, 20, 0);
    const std::array<View, 3> views = {
        {{"north", {0, 110, 330}}, {"southeast", {260, 90, -220}}, {"high", {-60, 380, 130}}}};
    for (const View& view : views)
        stage.shoot(scene, view.direction, middle, name + "-" + view.name);
}

} // namespace

void shootModel(Stage& stage, const std::string& modelName) {
    MilkShapeModel model("<MilkShape Model>");
    if (!model.load(modelName))
        return;
    const std::string name = "model-" + modelName;
    if (modelName == "rocket") {
        shootRocket(stage);
        return;
    }
    if (modelName == "sky") {
        for (const View& view : sides)
            stage.shoot(model, Vector3(0, 20, 0), Vector3(0, 20, 0) + view.direction, name + "-" + view.name);
        return;
    }
    if (model.getCurrentAnimation().empty()) {
        shootFromAllSides(stage, model, boxOf(model), name);
        return;
    }
    for (const char* const clip : {"idle", "walk", "jump"}) {
        model.setAnimation(clip);
        for (int moment = 0; moment < 4; ++moment) {
            const Vector3 eye = normalized(sides[static_cast<std::size_t>(moment)].direction) * 11.0f;
            stage.shoot(model, eye, Vector3(0, 0, 0), name + "-" + clip + "-" + std::to_string(moment));
            stage.advance(12);
        }
    }
}

void shootRocket(Stage& stage) {
    SceneNode root("root");
    theModuleManager->setSceneRoot(&root);
    stage.advance(1);
    // It ends with the scene.
    auto* const rocket = new Rocket(Vector3(0, 0, 0), Vector3(4, 4, 2), nullptr);
    stage.advance(2); // it points along its flight from its second frame on
    for (const View& view : sides) {
        const Vector3 at = rocket->getPosition();
        stage.shoot(*rocket, at + normalized(view.direction) * 3.2f, at, std::string("model-rocket-") + view.name);
    }
    theModuleManager->setSceneRoot(nullptr);
}

void shootSolid(Stage& stage, const std::string& solidName) {
    csgObject solid;
    if (!solid.load("./csg/" + solidName))
        return;
    solid.rebuildArrays();
    shootFromAllSides(stage, solid, solid.getLocalBounds(), "solid-" + solidName);
}

void shootLevel(Stage& stage, const std::string& levelName) {
    GameLoader loader;
    SceneNode* const scene = loader.loadLevel(levelName);
    if (scene == nullptr)
        return;
    const std::string name = "level-" + levelName;
    stage.advance(40); // worms arrive, cameras find their places
    shootLevelViews(stage, *scene, name);
    Worm* const worm = firstWorm();
    stage.shootAs(*worm->getFollowCamera(), *scene, name + "-worm");
    shootLabel(stage, *scene, name);
    cutCraters(*scene);
    stage.shoot(*scene, Vector3(0, 110, 330), Vector3(0, 20, 0), name + "-craters");
    stage.shoot(*scene, Vector3(60, 160, 60), Vector3(0, 20, 0), name + "-craters-near");
    endRound();
}

void shootWeapons(Stage& stage, const std::string& levelName) {
    GameLoader loader;
    SceneNode* const scene = loader.loadLevel(levelName);
    if (scene == nullptr)
        return;
    stage.advance(40);
    Worm* const worm = firstWorm();
    const Vector3 at = worm->getWorldPosition();
    const char* const names[] = {"bazooka", "shotgun", "dynamite", "beamer", "airstrike"};
    for (std::size_t i = 0; i < std::size(names); ++i) {
        worm->weapon = worm->getTeam()->getWeaponEntry(i).weapon.get();
        worm->addChild(worm->weapon);
        const std::string name = std::string("hand-") + names[i];
        InputControl* const input = theModuleManager->getInputControl();
        input->handleMessage(WM_KEYDOWN, 'Q', 0);
        stage.shootAs(*worm->getAimCamera(), *scene, name + "-aim");
        input->handleMessage(WM_KEYUP, 'Q', 0);
        for (const View& view : sides)
            stage.shoot(*scene, at + normalized(view.direction) * 17.0f, at, name + "-" + view.name);
        worm->removeChild(worm->weapon);
        worm->weapon = nullptr;
    }
    endRound();
}
