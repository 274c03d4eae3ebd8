// The shipped data: every file reads back, solids are closed, and a whole round can be played.

#include "core/app/game_loader.h"
#include "core/services/module_manager.h"
#include "csg/land/csg_object.h"
#include "platform/headless/headless.h"
#include "render/device/texture_manager.h"
#include "render/view/milkshape_model.h"
#include "support/solids.h"
#include "support/test_data.h"
#include "support/test_services.h"
#include "support/whole_round.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <set>

namespace {

std::vector<std::string> namesIn(const char* directory, const char* extension) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(directory))
        if (entry.path().extension() == extension)
            names.push_back(entry.path().stem().string());
    EXPECT_FALSE(names.empty());
    return names;
}

class DataFiles : public testing::Test {
protected:
    const ShippedData data;
    const TestServices services;
};

TEST_F(DataFiles, EverySolidIsClosedAndOrientedOutward) {
    for (const std::string& name : namesIn("csg", ".csg")) {
        csgObject solid;
        ASSERT_TRUE(solid.load("./csg/" + name)) << name;
        EXPECT_EQ(openEdgesOf(solid), 0u) << name;
        EXPECT_GT(volumeOf(solid), 0.0) << name;
        EXPECT_EQ(std::ranges::count(solid.getTextures(), nullptr), 0) << name;
        EXPECT_EQ(solid.getTextureNames().at(0), "earth") << name;
    }
}

TEST_F(DataFiles, EveryModelAndTextureReadsBack) {
    for (const std::string& name : namesIn("mesh", ".ms3d")) {
        MilkShapeModel model("model");
        EXPECT_TRUE(model.load(name)) << name;
        for (const ModelMaterial& material : model.getMaterials())
            EXPECT_TRUE(material.textureFile.empty() || material.texture != nullptr)
                << name << " asks for " << material.textureFile;
    }
    std::vector<std::string> textures = namesIn("textures", ".tga");
    textures.insert(textures.end(), {"font", "hud", "water", "explosion", "smoke"}); // those that the game asks for
    for (const std::string& name : textures)
        EXPECT_NE(theModuleManager->getTextureManager()->getTexture(name), nullptr) << name;
}

TEST_F(DataFiles, EveryClipIsFollowedByOneThatIsThere) {
    for (const std::string& name : namesIn("mesh", ".ani")) {
        std::ifstream in("mesh/" + name + ".ani");
        int count = 0;
        in >> count;
        std::string clip;
        std::string next;
        std::set<std::string> clips;
        std::set<std::string> followers;
        for (; count > 0; --count) {
            int first = 0;
            int last = 0;
            in >> clip >> first >> last >> next;
            EXPECT_LT(first, last) << clip;
            clips.insert(clip);
            followers.insert(next);
        }
        EXPECT_TRUE(std::ranges::includes(clips, followers)) << name;
        EXPECT_TRUE(in.good()) << name;
        EXPECT_FALSE(in >> clip) << name;
    }
}

TEST_F(DataFiles, EveryTeamHasNamesAndAColourOfItsOwn) {
    std::vector<float> brightness;
    for (const std::string& team : namesIn("teams", ".tm")) {
        if (team == "teams")
            continue;
        std::vector<std::string> names;
        float r = -1;
        float g = -1;
        float b = -1;
        GameLoader().readTeamFile(team, names, r, g, b);
        EXPECT_GE(names.size(), 3u) << team;
        EXPECT_GE(std::min({r, g, b}), 0.0f) << team;
        EXPECT_LE(std::max({r, g, b}), 1.0f) << team;
        const float own = 0.299f * r + 0.587f * g + 0.114f * b;
        for (const float other : brightness)
            EXPECT_GT(std::fabs(own - other), 0.04f) << team << " looks like another team without colour vision";
        brightness.push_back(own);
    }
    EXPECT_GE(brightness.size(), 4u);
}

TEST(ShippedData, AWholeRoundIsPlayedAndTheSameSeedGivesTheSameBits) {
    const ShippedData data;
    RoundRecord records[2];
    for (RoundRecord& record : records) {
        EXPECT_EQ(playWholeRound(1, record), 0);
        EXPECT_EQ(record.teamsLeft, 1);
        EXPECT_GE(record.turns, 6u);
        EXPECT_TRUE(headless::messageBoxes().empty());
        EXPECT_EQ(headless::problems(), std::vector<std::string>());
    }
    EXPECT_EQ(records[0].stateHash, records[1].stateHash);
}

} // namespace
