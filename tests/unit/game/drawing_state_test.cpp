// Every node leaves GL as it found it: lighting, depth writes, texturing, culling, matrix stacks.

#include "core/teams/team.h"
#include "csg/land/csg_object.h"
#include "game/armoury/armoury.h"
#include "game/effects/explosion.h"
#include "game/effects/particle_system.h"
#include "game/effects/test_node.h"
#include "game/play/weapon.h"
#include "game/play/worm.h"
#include "render/camera/camera.h"
#include "render/device/renderer.h"
#include "render/view/label_node.h"
#include "render/view/milkshape_model.h"
#include "render/view/static_mesh.h"
#include "render/view/water_node.h"
#include "support/model_file.h"
#include "support/play.h"
#include "support/solids.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <tuple>

namespace {

auto snapshot() {
    const headless::GlState& state = headless::glState();
    std::vector<bool> switches = {state.settings.depthMask, state.vertexArray.enabled};
    for (const int capability : {GL_LIGHTING, GL_DEPTH_TEST, GL_TEXTURE_2D, GL_CULL_FACE, GL_BLEND})
        switches.push_back(headless::glEnabled(static_cast<GLenum>(capability)));
    return std::tuple{switches, state.settings.activeUnit, state.modelview.size(), state.projection.size(),
                      state.modelview.back()};
}

std::size_t primitivesOf(SceneNode& node, Camera* camera) {
    return captured([&] { node.render(camera); }).size();
}

class DrawingState : public testing::Test {
protected:
    DrawingState() {
        ModelFile model;
        model.vertices = {{{0, 0, 0}}, {{1, 0, 0}}, {{0, 1, 0}}};
        model.indices = {0, 1, 2};
        for (const char* const name : {"wurm", "plain", "bazooka"})
            data.write(std::string("mesh/") + name + ".ms3d", model.bytes());
        data.write("mesh/hut.msh", "1 3 0 0 0 0 0 1 0 0 1 0 0 1 0 0 1 1 0 1 2 wood");
        data.writeSolid("slab", boxData({-1, -1, -1}, {1, 1, 1}));
        auto* const camera = new Camera;
        theModuleManager->getSceneRoot()->addChild(camera);
        camera->apply();
        theModuleManager->setCamera(camera);
    }

    void expectNoTrace(SceneNode& node, const char* kind) {
        SCOPED_TRACE(kind);
        node.setPosition(0, 0, -20);
        node.SceneNode::update();
        const auto before = snapshot();
        EXPECT_GT(primitivesOf(node, theModuleManager->getCamera()), 0u);
        EXPECT_TRUE(before == snapshot());
        EXPECT_EQ(headless::problems(), std::vector<std::string>());
    }

    TestData data;
    TestServices services;
    const BoundingBox nowhere;
};

TEST_F(DrawingState, NoNodeLeavesATrace) {
    MilkShapeModel model("model");
    ASSERT_TRUE(model.load("plain"));
    expectNoTrace(model, "model");
    LabelNode label;
    label.setText("label");
    expectNoTrace(label, "label");
    WaterNode water;
    expectNoTrace(water, "water");
    StaticMesh mesh("hut");
    expectNoTrace(mesh, "static mesh");
    Testnode cube("Rocket", 0.2f);
    expectNoTrace(cube, "cube");
    Explosion explosion("explosion", Vector3(0, 0, -20), 10);
    expectNoTrace(explosion, "explosion");
    ParticleSystem smoke("smoke");
    expectNoTrace(smoke, "smoke");
    Team team("team", &nowhere, 1, 1, 1, {}, 0, issueWeapons);
    Worm worm("worm", &team);
    expectNoTrace(worm, "worm");
    csgObject land;
    ASSERT_TRUE(land.load("./csg/slab"));
    land.rebuildArrays();
    for (const char* const mode : {"immediate", "vertex array", "vertex buffer"}) {
        expectNoTrace(land, mode);
        theModuleManager->getRenderer()->cycleRenderMode();
    }
    glDisable(GL_TEXTURE_2D);
    expectNoTrace(model, "model where texturing is off");
}

TEST_F(DrawingState, InItsAimViewAWormDrawsOnlyItsWeapon) {
    Team team("team", &nowhere, 1, 1, 1, {}, 0, issueWeapons);
    Worm worm("worm", &team);
    frustumCulling = false;
    EXPECT_EQ(primitivesOf(worm, worm.getAimCamera()), 0u);
    worm.weapon = team.getWeaponEntry(0).weapon.get();
    worm.addChild(worm.weapon);
    EXPECT_EQ(primitivesOf(worm, worm.getAimCamera()), 1u);
    EXPECT_GT(primitivesOf(worm, worm.getFollowCamera()), 1u);
    frustumCulling = true;
}

} // namespace
