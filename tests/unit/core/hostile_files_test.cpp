// Files that were made to hurt. Whatever fuzzing finds is added to tests/data/hostile and, with its outcome, here.

#include "core/data_error.h"
#include "core/data_limits.h"
#include "core/file_access.h"
#include "core/game_loader.h"
#include "core/level_files.h"
#include "core/log.h"
#include "core/scene_node.h"
#include "csg/csg_file.h"
#include "csg/csg_object.h"
#include "platform/headless/headless.h"
#include "render/milkshape_model.h"
#include "render/static_mesh.h"
#include "render/texture_manager.h"
#include "support/model_file.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cmath>
#include <fstream>
#include <functional>
#include <map>

namespace fs = std::filesystem;

namespace {

/// What a file is refused with, or null when it is to be usable.
using Outcomes = std::map<std::string, const char*>;

std::string logged;

void keepLine(const char* text) {
    logged += text;
}

class HostileFiles : public testing::Test {
protected:
    HostileFiles() {
        data.writeFlatLevel({{"A", {"A1"}, 1}, {"B", {"B1"}, 1}});
        setLogSink(keepLine);
    }
    ~HostileFiles() override { setLogSink(nullptr); }

    /// Puts each file of a loader's folder in place and loads it: whether it could be used, and the reason in `logged`
    /// where not. Every file has its outcome and every outcome its file.
    void expectOutcomes(const std::string& folder, const std::string& place, const Outcomes& outcomes,
                        const std::function<bool()>& load) {
        const fs::path hostile = fs::path(BRACKENMOOR_TEST_DATA_DIR) / "hostile" / folder;
        EXPECT_EQ(static_cast<std::size_t>(std::distance(fs::directory_iterator(hostile), {})), outcomes.size());
        for (const auto& [name, reason] : outcomes) {
            SCOPED_TRACE(name);
            fs::copy_file(hostile / name, place, fs::copy_options::overwrite_existing);
            logged.clear();
            EXPECT_EQ(load(), reason == nullptr);
            EXPECT_TRUE(reason == nullptr || logged.find(reason) != std::string::npos) << logged;
            EXPECT_EQ(headless::problems(), std::vector<std::string>());
        }
    }

    /// Loads the level "flat"; what the message box would say goes where the log's lines go.
    static bool loadFlat() {
        endRound();
        beginRoundData();
        GameLoader loader;
        const bool loaded = loader.loadLevel("flat") != nullptr;
        if (!loaded) {
            reportDataError("flat", "no fault was said");
            logged += headless::messageBoxes().back().text;
        }
        return loaded;
    }

    static bool drawsFinite(SceneNode& node) {
        bool finite = true;
        headless::captureGeometry(true);
        node.draw();
        for (const headless::GlPrimitive& primitive : headless::glPrimitives())
            for (const std::array<float, 3>& v : primitive.vertices)
                finite = finite && std::isfinite(v[0]) && std::isfinite(v[1]) && std::isfinite(v[2]);
        EXPECT_FALSE(headless::glPrimitives().empty());
        headless::captureGeometry(false);
        return finite;
    }

    TestData data;
    TestServices services;
};

TEST_F(HostileFiles, Models) {
    data.write("mesh/m.ani", "1 walk 0 5 walk");
    expectOutcomes("ms3d", "mesh/m.ms3d",
                   {{"shininess-below-zero.ms3d", nullptr},
                    {"corner-out-of-reach.ms3d", "not whole"},
                    {"sixty-thousand-joints-promised.ms3d", "not whole"},
                    {"no-time-between-frames.ms3d", nullptr},
                    {"joints-in-a-ring.ms3d", nullptr}},
                   [this] {
                       MilkShapeModel model("model");
                       if (!model.load("m"))
                           return false;
                       services.tick(100);
                       model.update();
                       return drawsFinite(model);
                   });
}

TEST_F(HostileFiles, Clips) {
    ModelFile file;
    file.vertices = {{{6, 0, 0}, 0}, {{7, 0, 0}, 0}, {{6, 1, 0}, 0}};
    file.indices = {0, 1, 2};
    file.joints = {{"root", "", {0, 0, 0}, {0, 0, 0}, {{0, {0, 0, 0}}, {1, {1, 0, 0}}}, {}}};
    data.write("mesh/m.ms3d", file.bytes());
    std::string playing;
    expectOutcomes("ani", "mesh/m.ani",
                   {{"ring-without-duration.ani", nullptr},
                    {"next-is-not-there.ani", nullptr},
                    {"frames-run-backwards.ani", nullptr},
                    {"a-billion-clips-promised.ani", nullptr}},
                   [&] {
                       MilkShapeModel model("model");
                       EXPECT_TRUE(model.load("m"));
                       services.tick(200);
                       model.update();
                       playing += model.getCurrentAnimation() + ';';
                       return drawsFinite(model);
                   });
    EXPECT_EQ(playing, "walk;;;;") << "only the first of them, by name, has a clip to play";
}

TEST_F(HostileFiles, Solids) {
    expectOutcomes("csg", "csg/s.csg",
                   {{"corner-out-of-reach.csg", "vertex 1: x is too large"},
                    {"a-billion-corners-promised.csg", "vertex 0: x is missing"},
                    {"texture-in-another-folder.csg", nullptr}},
                   [] {
                       csgObject solid;
                       return solid.load("./csg/s") && drawsFinite(solid);
                   });
    std::string many = "1 3 0 0 0 0 0 1 0 0 0 0 0 1 0 0 0 " + std::to_string(csgMostFaces + 1);
    for (std::size_t i = 0; i <= csgMostFaces; ++i)
        many += " 0 1 2";
    data.write("csg/s.csg", many + " rock");
    csgObject solid;
    EXPECT_FALSE(solid.load("./csg/s"));
    EXPECT_NE(logged.find("more than " + std::to_string(csgMostFaces) + " faces"), std::string::npos) << logged;
}

TEST_F(HostileFiles, StaticMeshes) {
    expectOutcomes("msh", "mesh/m.msh",
                   {{"corner-out-of-reach.msh", "not whole"}, {"a-billion-triangles-promised.msh", "not whole"}},
                   [] { return StaticMesh("m").getGroupCount() > 0; });
}

TEST_F(HostileFiles, Textures) {
    expectOutcomes(
        "tga", "textures/t.tga",
        {{"larger-than-the-file.tga", "Could not read Texturedata"}, {"longer-than-its-picture.tga", nullptr}},
        [] { return theModuleManager->getTextureManager()->getTexture("t") != nullptr; });
}

TEST_F(HostileFiles, Levels) {
    expectOutcomes("level", "level/flat.lev",
                   {{"scaled-out-of-reach.lev", nullptr},
                    {"placed-out-of-reach.lev", "placed out of reach"},
                    {"name-with-a-zero-byte.lev", nullptr},
                    {"worm-lost-as-it-lands.lev", nullptr},
                    {"solid-by-way-of-its-parent-folder.lev", nullptr},
                    {"more-solids-than-allowed.lev", "more than 1000 solids"},
                    {"not-one-complete-entry.lev", "cannot be read"}},
                   [] {
                       const bool loaded = loadFlat();
                       if (loaded) {
                           std::size_t solids = 0;
                           theModuleManager->getSceneRoot()->forEachChild(
                               [&](SceneNode* child) { solids += child->asCsgNode() != nullptr ? 1 : 0; });
                           EXPECT_EQ(solids, 1u) << "the good entry is there, the bad one is not";
                       }
                       return loaded;
                   });
}

TEST_F(HostileFiles, ALevelOfManyTimesALargeSolidIsRefused) {
    std::string faces = "1 3 0 0 0 0 0 1 0 0 0 0 0 1 0 0 0 5000";
    for (int i = 0; i < 5000; ++i)
        faces += " 0 1 2";
    data.write("csg/large.csg", faces + " rock");
    std::string level = "1000";
    for (int i = 0; i < 1000; ++i)
        level += "\nlarge 1 1 1 0 0 0 0 0 0";
    data.write("level/flat.lev", level);
    EXPECT_FALSE(loadFlat());
    EXPECT_NE(logged.find("more than " + std::to_string(GameLoader::mostFaces) + " faces"), std::string::npos)
        << logged;
    // What is out of reach counts too: it takes as long to load.
    data.write("level/flat.lev", "1000 large 1 1 1 0 0 0 1000000 0 0");
    EXPECT_FALSE(loadFlat());
}

TEST_F(HostileFiles, TeamLists) {
    expectOutcomes("team_list", "teams/teams.tm",
                   {{"too-many-worms-in-all.tm", "more than 200 worms"},
                    {"as-many-worms-as-an-int-holds.tm", "more than 100 worms"},
                    {"name-longer-than-any-path.tm", "a name of more than 1000 characters"}},
                   loadFlat);
}

TEST_F(HostileFiles, Teams) {
    expectOutcomes(
        "team", "teams/B.tm",
        {{"count-but-no-names.tm", "teams/B.tm:2: name 1 of 2000000000"}, {"colour-beyond-all-colours.tm", nullptr}},
        loadFlat);
}

TEST_F(HostileFiles, LevelLists) {
    expectOutcomes("level_list", "level/levels.lev", {{"long-name-to-repeat.lev", ""}, {"count-but-no-names.lev", ""}},
                   [] {
                       std::vector<std::string> names;
                       readLevelList(names);
                       return !names.empty();
                   });
}

TEST(FileAccess, WhatIsNoRegularFileIsMissing) {
    const TestData data;
    std::string text = "as it was";
    data.write("plain", "contents");
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    for (const std::string& name : {std::string("pipe"), std::string("level"), std::string("absent"),
                                    std::string("plain\0.lev", 10), std::string(5000, 'x')})
        EXPECT_FALSE(readWholeFile(name, text)) << name;
    data.write("huge", "");
    fs::resize_file("huge", largestFile + 1); // takes no room on the disk
    EXPECT_FALSE(readWholeFile("huge", text));
    EXPECT_EQ(text, "as it was");
    EXPECT_TRUE(readWholeFile("plain", text));
    EXPECT_EQ(text, "contents");
}

} // namespace
