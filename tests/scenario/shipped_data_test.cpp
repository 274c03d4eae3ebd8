// The shipped data: every file reads back, the land is closed, worms find ground, and a whole round can be played.

#include "core/file_access.h"
#include "core/game_loader.h"
#include "core/module_manager.h"
#include "core/scene_node.h"
#include "core/team.h"
#include "core/team_manager.h"
#include "core/text_reader.h"
#include "csg/csg_object.h"
#include "game/worm.h"
#include "platform/headless/headless.h"
#include "render/milkshape_model.h"
#include "render/texture_manager.h"
#include "support/play.h"
#include "support/solids.h"
#include "support/test_data.h"
#include "support/test_services.h"
#include "support/whole_round.h"
#include "support/world_hash.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <set>

namespace {

std::vector<std::string> namesIn(const char* directory, const char* extension) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(directory))
        if (entry.path().extension() == extension)
            names.push_back(entry.path().stem().string());
    return names;
}

TEST(ShippedData, EverySolidIsClosedAndOrientedOutward) {
    const ShippedData data;
    const TestServices services;
    const std::vector<std::string> solids = namesIn("csg", ".csg");
    EXPECT_GE(solids.size(), 5u);
    for (const std::string& name : solids) {
        csgObject solid;
        ASSERT_TRUE(solid.load("./csg/" + name)) << name;
        EXPECT_EQ(openEdgesOf(solid), 0u) << name;
        EXPECT_GT(volumeOf(solid), 0.0) << name;
        for (std::size_t part = 0; part < solid.getTextures().size(); ++part)
            EXPECT_NE(solid.getTextures()[part], nullptr) << name << " asks for " << solid.getTextureNames()[part];
        EXPECT_EQ(solid.getTextureNames().empty() ? "" : solid.getTextureNames()[0], "earth") << name;
    }
}

TEST(ShippedData, EveryModelAndTextureReadsBack) {
    const ShippedData data;
    const TestServices services;
    for (const std::string& name : namesIn("mesh", ".ms3d")) {
        MilkShapeModel model("model");
        EXPECT_TRUE(model.load(name)) << name;
        for (const ModelMaterial& material : model.getMaterials())
            EXPECT_TRUE(material.textureFile.empty() || material.texture != nullptr)
                << name << " asks for " << material.textureFile;
    }
    for (const std::string& name : namesIn("textures", ".tga"))
        EXPECT_NE(theModuleManager->getTextureManager()->getTexture(name), nullptr) << name;
    for (const char* const fixedName : {"font", "hud", "water", "explosion", "smoke"})
        EXPECT_NE(theModuleManager->getTextureManager()->getTexture(fixedName), nullptr) << fixedName;
}

TEST(ShippedData, EveryClipIsFollowedByOneThatIsThere) {
    const ShippedData data;
    for (const std::string& name : namesIn("mesh", ".ani")) {
        std::string text;
        ASSERT_TRUE(readWholeFile("mesh/" + name + ".ani", text));
        TextReader in(text);
        int count = 0;
        ASSERT_TRUE(in.read(count));
        std::set<std::string> clips;
        std::set<std::string> followers;
        for (int i = 0; i < count; ++i) {
            std::string clip;
            std::string next;
            int first = 0;
            int last = 0;
            ASSERT_TRUE(in.read(clip) && in.read(first) && in.read(last) && in.read(next)) << name;
            EXPECT_LT(first, last) << clip;
            clips.insert(clip);
            followers.insert(next);
        }
        EXPECT_TRUE(std::includes(clips.begin(), clips.end(), followers.begin(), followers.end())) << name;
        EXPECT_TRUE(in.isAtEnd()) << name;
    }
}

TEST(ShippedData, EveryTeamOfEveryFileHasNamesAndAColourOfItsOwn) {
    const ShippedData data;
    GameLoader loader;
    std::vector<float> brightness;
    for (const std::string& team : namesIn("teams", ".tm")) {
        if (team == "teams")
            continue;
        std::vector<std::string> names;
        float r = -1;
        float g = -1;
        float b = -1;
        loader.readTeamFile(team, names, r, g, b);
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

TEST(ShippedData, WormsStandDryOnTheLand) {
    const ShippedData data;
    for (unsigned seed = 1; seed <= 10; ++seed) {
        PlaySettings settings;
        settings.startTick = seed * 7919;
        playGame(
            []() -> Script {
                co_await frames(40);
                for (const Team* const team : theModuleManager->getTeamManager()->getTeams()) {
                    EXPECT_EQ(team->getWorms().size(), 3u);
                    for (const Worm* const worm : team->getWorms())
                        EXPECT_GE(worm->getPosition().y, 1.0f);
                }
            },
            settings);
    }
}

TEST(ShippedData, AWholeRoundIsPlayed) {
    const ShippedData data;
    RoundRecord record;
    EXPECT_EQ(playWholeRound(1, record), 0);
    EXPECT_EQ(record.teamsLeft, 1);
    EXPECT_GE(record.turns, 6u);
    EXPECT_TRUE(record.bannerShown);
    EXPECT_TRUE(record.nextRoundStarted);
    EXPECT_TRUE(headless::messageBoxes().empty());
    for (const std::string& problem : headless::problems())
        ADD_FAILURE() << problem;
}

TEST(ShippedData, TheSameSeedAndScriptGiveTheSameBits) {
    const ShippedData data;
    RoundRecord first;
    RoundRecord second;
    playWholeRound(5, first, 4);
    playWholeRound(5, second, 4);
    EXPECT_EQ(first.stateHash, second.stateHash);
}

} // namespace
