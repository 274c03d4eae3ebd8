// No file, however scrambled, crashes a loader or leaves half an object behind.

#include "core/game_loader.h"
#include "core/level_files.h"
#include "csg/csg_object.h"
#include "platform/headless/headless.h"
#include "render/milkshape_model.h"
#include "render/static_mesh.h"
#include "render/texture_manager.h"
#include "support/model_file.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>

namespace {

constexpr int variants = 1500;

class ScrambledFiles : public testing::Test {
protected:
    /// Writes variants of a good file with bytes changed, taken out, doubled or cut off, and loads each. Returns how
    /// many loaded all the same.
    int survivors(const std::string& path, const std::string& good, const std::function<bool()>& load) {
        int loaded = 0;
        for (int i = 0; i < variants; ++i) {
            data.write(path, scrambled(good));
            loaded += load() ? 1 : 0;
        }
        return loaded;
    }

    std::string scrambled(std::string text) {
        const auto below = [this](std::size_t limit) {
            return limit == 0 ? 0 : std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
        };
        for (std::size_t change = below(4) + 1; change > 0; --change) {
            const std::size_t at = below(text.size());
            const std::string tail = text.substr(at);
            text.resize(at);
            switch (below(5)) {
            case 0: // cut off
                break;
            case 1: // taken out
                text.append(tail.substr(std::min(tail.size(), below(8))));
                break;
            case 2: // doubled
                text.append(tail.substr(0, below(40))).append(tail);
                break;
            case 3: // put in
                text.append(digits[below(std::size(digits))]).append(tail);
                break;
            default: // changed
                text.push_back(static_cast<char>(below(256)));
                text.append(tail.substr(std::min<std::size_t>(tail.size(), 1)));
                break;
            }
        }
        return text;
    }

    static constexpr const char* digits[] = {" -1 ", " 99999999 ", " nan ", " 1e300 ", "\xFF\xFF\xFF\xFF", " 0 "};
    TestData data;
    TestServices services;
    std::mt19937 random{7};
};

TEST_F(ScrambledFiles, Models) {
    ModelFile file;
    file.vertices = {{{6, 0, 0}, 1}, {{7, 0, 0}, 0}, {{6, 1, 0}, -1}};
    file.indices = {0, 1, 2, 2, 1, 0};
    file.joints = {{"root", "", {0, 0, 0}, {0, 0, 0}, {{0, {0, 0, 0}}, {1, {1, 0, 0}}}, {}},
                   {"tip", "root", {0, 0, 0}, {5, 0, 0}, {}, {{0, {0, 0, 0}}}}};
    file.textureFile = "skin.tga";
    data.write("mesh/m.ani", "2 a 0 5 b b 5 9 a");
    MilkShapeModel model("model");
    const int loaded = survivors("mesh/m.ms3d", file.bytes(), [&] {
        const bool good = model.load("m");
        services.tick(400);
        model.update();
        model.draw();
        return good;
    });
    EXPECT_GT(loaded, 0);
    EXPECT_LT(loaded, variants);

    data.write("mesh/m.ms3d", file.bytes());
    survivors("mesh/m.ani", "2 a 0 5 b b 5 9 a", [&] {
        model.load("m");
        services.tick(400);
        model.update();
        return true;
    });
}

TEST_F(ScrambledFiles, Solids) {
    const std::string good = "1 4\n0 0 0 0 0\n1 0 0 1 0\n0 1 0 0 1\n0 0 1 1 1\n4\n0 2 1\n0 1 3\n1 2 3\n0 3 2\nearth\n";
    const int loaded = survivors("csg/s.csg", good, [] {
        csgObject solid;
        const bool read = solid.load("./csg/s");
        solid.scale(2, 2, 2);
        solid.rotateX(1);
        solid.rebuildArrays();
        solid.draw();
        return read;
    });
    EXPECT_GT(loaded, 0);
    EXPECT_LT(loaded, variants);
}

TEST_F(ScrambledFiles, StaticMeshes) {
    survivors("mesh/m.msh", "1 3 0 0 0 0 0 1 0 0 1 0 0 1 0 0 1 1 0 1 2 wood", [] {
        StaticMesh mesh("m");
        mesh.draw();
        return mesh.getGroupCount() > 0;
    });
}

TEST_F(ScrambledFiles, Textures) {
    std::string good = {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 3, 0, 2, 0, 24, 0};
    good += std::string(18, 'x');
    int name = 0;
    for (int i = 0; i < variants; ++i) {
        std::string texture = std::to_string(name++);
        data.write(std::string("textures/").append(texture).append(".tga"), scrambled(good));
        theModuleManager->getTextureManager()->getTexture(texture);
    }
}

TEST_F(ScrambledFiles, LevelsAndTeams) {
    const std::vector<TestData::TeamDescription> teams = {{"A", {"A1"}, 1}, {"B", {"B1", "B2"}, 2}};
    data.writeFlatLevel(teams);
    const auto load = [] {
        endRound();
        GameLoader loader;
        return loader.loadLevel("flat") != nullptr;
    };
    EXPECT_TRUE(load());
    const std::pair<const char*, const char*> files[] = {{"level/flat.lev", "1\nslab 1 1 1 0 0 0 0 0 0\n"},
                                                         {"teams/teams.tm", "2\nA 1\nB 2\n"},
                                                         {"teams/B.tm", "2\nB1\nB2\n0.25 0.5 1\n"}};
    for (const auto& [path, good] : files) {
        for (int i = 0; i < variants / 10; ++i) {
            data.write(path, scrambled(good));
            load();
        }
        data.write(path, good);
    }
    EXPECT_TRUE(load()) << "good files load again";
    std::vector<std::string> names;
    survivors("level/levels.lev", "2 flat hilly", [&] {
        names.clear();
        readLevelList(names);
        return names.size() <= mostRepeatedNames + 2u;
    });
}

} // namespace
