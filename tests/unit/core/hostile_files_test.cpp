// Files that were made to hurt, and good ones cut off anywhere or scrambled: no loader crashes or leaves half an
// object. Whatever fuzzing finds is added to tests/data/hostile and, with its outcome, here.

#include "core/app/game_loader.h"
#include "core/app/level_files.h"
#include "core/base/data_error.h"
#include "core/base/data_limits.h"
#include "core/base/file_access.h"
#include "core/base/log.h"
#include "core/scene/scene_node.h"
#include "csg/land/csg_object.h"
#include "csg/solid/csg_file.h"
#include "render/device/texture_manager.h"
#include "render/view/milkshape_model.h"
#include "render/view/static_mesh.h"
#include "support/model_file.h"
#include "support/play.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cmath>
#include <functional>
#include <map>
#include <random>
#include <sstream>

namespace fs = std::filesystem;

namespace {

/// What a file is refused with, or null when it is to be usable.
using Outcomes = std::map<std::string, const char*>;

std::string logged;

/// A strip of so many faces.
std::string flatSolid(std::size_t faces) {
    std::ostringstream text;
    text << "1 " << faces + 2;
    for (std::size_t i = 0; i < faces + 2; ++i)
        text << ' ' << i / 20 << ' ' << i % 2 << ' ' << i % 20 << " 0 0";
    text << ' ' << faces;
    for (std::size_t i = 0; i < faces; ++i)
        text << ' ' << i << ' ' << i + 1 << ' ' << i + 2;
    text << " rock";
    return text.str();
}

/// Two joints, of which one moves.
std::string movingModel() {
    ModelFile file;
    file.vertices = {{{6, 0, 0}, 1}, {{7, 0, 0}, 0}, {{6, 1, 0}, -1}};
    file.indices = {0, 1, 2, 2, 1, 0};
    file.joints = {{"root", "", {}, {}, {{0, {0, 0, 0}}, {1, {1, 0, 0}}}, {}},
                   {"tip", "root", {}, {5, 0, 0}, {}, {{}}}};
    file.textureFile = "skin.tga";
    return file.bytes();
}

class HostileFiles : public testing::Test {
protected:
    HostileFiles() {
        data.writeFlatLevel({{"A", {"A1"}, 1}, {"B", {"B1"}, 1}});
        setLogSink([](const char* text) { logged += text; });
    }
    ~HostileFiles() override { setLogSink(nullptr); }

    static void expectLogged(const std::string& reason) { EXPECT_NE(logged.find(reason), std::string::npos) << logged; }

    bool loads(const std::function<bool()>& load) const {
        logged.clear();
        const bool loaded = load();
        EXPECT_EQ(headless::problems(), std::vector<std::string>());
        return loaded;
    }

    /// Puts each file of a loader's folder in place and loads it: whether it could be used, and the reason in `logged`
    /// where not. Every file has its outcome and every outcome its file.
    void expectOutcomes(const std::string& folder, const std::string& place, const Outcomes& outcomes,
                        const std::function<bool()>& load) const {
        const fs::path hostile = fs::path(BRACKENMOOR_TEST_DATA_DIR) / "hostile" / folder;
        EXPECT_EQ(static_cast<std::size_t>(std::distance(fs::directory_iterator(hostile), {})), outcomes.size());
        for (const auto& [name, reason] : outcomes) {
            SCOPED_TRACE(name);
            fs::copy_file(hostile / name, place, fs::copy_options::overwrite_existing);
            EXPECT_EQ(loads(load), reason == nullptr);
            expectLogged(reason == nullptr ? "" : reason);
        }
    }

    /// Loads a good file, all its beginnings of fewer bytes than `shortest`, which are refused, and so many scrambled
    /// ones, of which some are.
    void expectSurvival(const std::string& place, const std::string& good, std::size_t shortest, int variants,
                        const std::function<bool()>& load) {
        for (std::size_t length = 0; length < shortest; ++length) {
            data.write(place, good.substr(0, length));
            EXPECT_FALSE(loads(load)) << place << " of " << length << " bytes";
        }
        int usable = 0;
        for (int i = 0; i < variants; ++i) {
            data.write(place, scrambled(good));
            usable += loads(load) ? 1 : 0;
        }
        EXPECT_TRUE(usable > 0 && usable < variants) << place << ' ' << usable;
        data.write(place, good);
        EXPECT_TRUE(loads(load)) << place;
    }

    /// Up to four times takes bytes out and puts others in.
    std::string scrambled(std::string text) {
        const auto below = [this](std::size_t limit) { return random() % limit; };
        const std::string items[] = {" -1 ", " 99999999 ", " nan ", " 1e300 ", "\xFF\xFF\xFF\xFF", " 0 ", ""};
        for (std::size_t change = below(4) + 1; change > 0; --change) {
            const std::size_t at = below(text.size() + 1);
            const std::size_t out[] = {0, 1, below(8), text.size()};
            const std::string in[] = {items[below(std::size(items))], std::string(1, static_cast<char>(below(256))),
                                      text.substr(at, below(40))};
            const std::size_t length = out[below(std::size(out))];
            text.replace(at, length, in[below(std::size(in))]);
        }
        return text;
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
        for (const headless::GlPrimitive& primitive : captured([&node] { node.draw(); }))
            for (const std::array<float, 3>& v : primitive.vertices)
                finite = finite && std::isfinite(v[0]) && std::isfinite(v[1]) && std::isfinite(v[2]);
        return finite;
    }

    TestData data;
    TestServices services;
    std::mt19937 random{7};
};

TEST_F(HostileFiles, ModelsAndTheirClips) {
    std::string playing;
    const auto load = [&] {
        MilkShapeModel model("model");
        if (!model.load("m")) {
            EXPECT_TRUE(model.getVertices().empty() && model.getJoints().empty());
            return false;
        }
        services.tick(200);
        model.update();
        playing += model.getCurrentAnimation() + ';';
        EXPECT_TRUE(drawsFinite(model));
        return true;
    };
    const std::string clips = "2 a 0 5 b b 5 9 a";
    const std::string model = movingModel();
    data.write("mesh/m.ani", clips);
    expectOutcomes("ms3d", "mesh/m.ms3d",
                   {{"shininess-below-zero.ms3d", nullptr},
                    {"corner-out-of-reach.ms3d", "not whole"},
                    {"sixty-thousand-joints-promised.ms3d", "not whole"},
                    {"no-time-between-frames.ms3d", nullptr},
                    {"joints-in-a-ring.ms3d", nullptr}},
                   load);
    expectSurvival("mesh/m.ms3d", model, model.size(), 600, load);
    data.write("mesh/m.ms3d", model + "more bytes are ignored");
    playing.clear();
    expectOutcomes("ani", "mesh/m.ani",
                   {{"ring-without-duration.ani", nullptr},
                    {"next-is-not-there.ani", nullptr},
                    {"frames-run-backwards.ani", nullptr},
                    {"a-billion-clips-promised.ani", nullptr}},
                   load);
    EXPECT_EQ(playing, "walk;;;;") << "only the first of them, by name, has a clip to play";
    expectSurvival("mesh/m.ani", clips, 0, 300, [&] {
        EXPECT_TRUE(load()) << "no clip keeps a model from being there";
        return playing.ends_with("a;");
    });
}

TEST_F(HostileFiles, Solids) {
    const auto load = [] {
        csgObject solid;
        if (!solid.load("./csg/s"))
            return false;
        EXPECT_TRUE(drawsFinite(solid));
        solid.scale(2, 2, 2);
        solid.rotateX(1);
        solid.rebuildArrays();
        return drawsFinite(solid);
    };
    expectOutcomes("csg", "csg/s.csg",
                   {{"corner-out-of-reach.csg", "vertex 1: x is too large"},
                    {"a-billion-corners-promised.csg", "vertex 0: x is missing"},
                    {"texture-in-another-folder.csg", nullptr}},
                   load);
    const std::string good = "1 4\n0 0 0 0 0\n1 0 0 1 0\n0 1 0 0 1\n0 0 1 1 1\n4\n0 2 1\n0 1 3\n1 2 3\n0 3 2\nearth\n";
    expectSurvival("csg/s.csg", good, good.size() - 6, 600, load);
    data.write("csg/s.csg", flatSolid(csgMostFaces + 1));
    EXPECT_FALSE(loads(load));
    expectLogged("more than " + std::to_string(csgMostFaces) + " faces");
}

TEST_F(HostileFiles, StaticMeshes) {
    const auto load = [] {
        StaticMesh mesh("m");
        EXPECT_TRUE(drawsFinite(mesh));
        return mesh.getGroupCount() > 0;
    };
    expectOutcomes("msh", "mesh/m.msh",
                   {{"corner-out-of-reach.msh", "not whole"}, {"a-billion-triangles-promised.msh", "not whole"}}, load);
    const std::string good = "2 3 0 0 0 0 0 1 0 0 1 0 0 1 0 0 1 1 0 1 2 wood 1 5 5 5 0.5 0.5 0 stone";
    expectSurvival("mesh/m.msh", good, good.size() - 4, 600, load);
}

TEST_F(HostileFiles, Textures) {
    int number = 0;
    const auto load = [&number] {
        const std::string name = 't' + std::to_string(number++);
        fs::rename("textures/t.tga", "textures/" + name + ".tga"); // the manager loads none twice
        return theModuleManager->getTextureManager()->getTexture(name) != nullptr;
    };
    expectOutcomes(
        "tga", "textures/t.tga",
        {{"larger-than-the-file.tga", "Could not read Texturedata"}, {"longer-than-its-picture.tga", nullptr}}, load);
    const std::string good = std::string{0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 3, 0, 2, 0, 24, 0} + std::string(18, 'x');
    expectSurvival("textures/t.tga", good, good.size(), 300, load);
}

TEST_F(HostileFiles, Levels) {
    const std::string good = "1\nslab 1 1 1 0 0 0 0 0 0\n";
    expectSurvival("level/flat.lev", good, good.size() - 2, 60, loadFlat);
    expectOutcomes("level", "level/flat.lev",
                   {{"scaled-out-of-reach.lev", nullptr},
                    {"placed-out-of-reach.lev", "placed out of reach"},
                    {"name-with-a-zero-byte.lev", nullptr},
                    {"worm-lost-as-it-lands.lev", nullptr},
                    {"solid-by-way-of-its-parent-folder.lev", nullptr},
                    {"more-solids-than-allowed.lev", "more than 1000 solids"},
                    {"not-one-complete-entry.lev", "cannot be read"}},
                   [] {
                       if (!loadFlat())
                           return false;
                       std::size_t solids = 0;
                       theModuleManager->getSceneRoot()->forEachChild(
                           [&](SceneNode* child) { solids += child->asCsgNode() != nullptr ? 1 : 0; });
                       EXPECT_EQ(solids, 1u) << "the good entry is there, the bad one is not";
                       return true;
                   });
    data.write("csg/large.csg", flatSolid(5000));
    std::string level = "1000";
    for (int i = 0; i < 1000; ++i)
        level += "\nlarge 1 1 1 0 0 0 0 0 0";
    data.write("level/flat.lev", level);
    EXPECT_FALSE(loads(loadFlat));
    expectLogged("more than " + std::to_string(GameLoader::mostFaces) + " faces");
    // What is out of reach counts too: it takes as long to load.
    data.write("level/flat.lev", "1000 large 1 1 1 0 0 0 1000000 0 0");
    EXPECT_FALSE(loads(loadFlat));
}

TEST_F(HostileFiles, Teams) {
    expectSurvival("teams/teams.tm", "2\nA 1\nB 2\n", 0, 150, loadFlat);
    expectSurvival("teams/B.tm", "2\nB1\nB2\n0.25 0.5 1\n", 0, 150, loadFlat);
    expectOutcomes(
        "team", "teams/B.tm",
        {{"count-but-no-names.tm", "teams/B.tm:2: name 1 of 2000000000"}, {"colour-beyond-all-colours.tm", nullptr}},
        loadFlat);
    expectOutcomes("team_list", "teams/teams.tm",
                   {{"too-many-worms-in-all.tm", "more than 200 worms"},
                    {"as-many-worms-as-an-int-holds.tm", "more than 100 worms"},
                    {"name-longer-than-any-path.tm", "a name of more than 1000 characters"}},
                   loadFlat);
}

TEST_F(HostileFiles, LevelLists) {
    const auto load = [] {
        std::vector<std::string> names;
        readLevelList(names);
        EXPECT_LE(names.size(), mostRepeatedNames + 2u);
        return !names.empty();
    };
    expectOutcomes("level_list", "level/levels.lev", {{"long-name-to-repeat.lev", ""}, {"count-but-no-names.lev", ""}},
                   load);
    expectSurvival("level/levels.lev", "2 flat hilly", 3, 300, load);
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
