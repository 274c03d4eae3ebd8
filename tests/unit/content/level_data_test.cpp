// Every level of the level list: its solids are there, worms that are dropped on it land dry, and no texture is
// smeared.

#include "core/app/game_loader.h"
#include "core/app/level_files.h"
#include "core/base/file_access.h"
#include "core/scene/bounding_box.h"
#include "core/services/module_manager.h"
#include "csg/land/csg_object.h"
#include "game/collision/collision_detection.h"
#include "game/collision/collision_packet.h"
#include "platform/crt_random.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <set>

namespace {

class LevelData : public testing::Test {
protected:
    ShippedData data;
    TestServices services;
};

TEST_F(LevelData, WhateverIsDroppedOnTheLandRestsDry) {
    std::vector<std::string> names;
    readLevelList(names);
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size()) << "a missing name is repeated";
    ASSERT_FALSE(names.empty());
    for (const std::string& name : names) {
        SCOPED_TRACE(name);
        std::string text;
        EXPECT_TRUE(readWholeFile("level/" + name + ".lev", text));
        const LevelText level = readLevelText(text);
        EXPECT_TRUE(level.usable && level.faults.empty());
        SceneNode root("root");
        for (const SolidEntry& entry : level.solids) {
            auto* const solid = new csgObject;
            root.addChild(solid);
            EXPECT_TRUE(solid->load("./csg/" + entry.name)) << entry.name;
            placeSolid(*solid, entry);
        }
        root.update();
        EXPECT_GE(root.getChildren().size(), 2u);
        const BoundingBox& box = root.getWorldBounds();
        crtSrand(11);
        int landed = 0;
        for (int i = 0; i < 1000; ++i) {
            CollisionPacket packet;
            packet.radius = Vector3(2.0f, 5.0f, 2.0f);
            packet.worldVelocity = Vector3(0.0f, -10000.0f, 0.0f);
            packet.worldPosition = Vector3(0.0f, box.max.y + 20.0f, 0.0f);
            packet.worldPosition.x = box.min.x + static_cast<float>(crtRand()) / 32767.0f * (box.max.x - box.min.x);
            packet.worldPosition.z = box.min.z + static_cast<float>(crtRand()) / 32767.0f * (box.max.z - box.min.z);
            theModuleManager->getCollisionDetection()->moveToContact(&packet, &root);
            const bool missed = packet.worldPosition.y < -10.0f;
            landed += missed ? 0 : 1;
            EXPECT_TRUE(missed || packet.worldPosition.y >= 1.0f) << packet.worldPosition.y;
        }
        EXPECT_GE(landed, 600);
    }
}

TEST_F(LevelData, NoTextureIsSmeared) {
    for (const auto& file : std::filesystem::directory_iterator("csg")) {
        csgObject solid;
        ASSERT_TRUE(solid.load("csg/" + file.path().stem().string()));
        std::size_t smeared = 0;
        for (const csgFaceList& part : solid.getParts()) {
            for (const auto& face : part) {
                const auto& [a, b, c] = face->tex;
                const double shown = std::fabs((b.u - a.u) * (c.v - a.v) - (c.u - a.u) * (b.v - a.v)) / 2.0;
                smeared += face->area() > 1.0 && shown * 22.0 * 22.0 < 0.5 * face->area() ? 1U : 0U;
            }
        }
        EXPECT_EQ(smeared, 0u) << file.path();
    }
}

} // namespace
