// Every level of the level list: its solids are there, worms that are dropped on it land dry, and craters leave it
// closed.

#include "core/bounding_box.h"
#include "core/file_access.h"
#include "core/game_loader.h"
#include "core/level_files.h"
#include "core/module_manager.h"
#include "csg/csg_object.h"
#include "game/collision_detection.h"
#include "game/collision_packet.h"
#include "platform/crt_random.h"
#include "support/solids.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <iterator>
#include <set>
#include <sstream>

namespace {

std::vector<std::string> levelNames() {
    std::vector<std::string> names;
    readLevelList(names);
    EXPECT_FALSE(names.empty());
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size()) << "a missing name is repeated";
    return names;
}

/// The placed solids of a level, children of a root.
struct Level {
    SceneNode root{"root"};
    std::vector<csgObject*> solids;
    BoundingBox box;

    explicit Level(const std::string& name) {
        std::string text;
        std::vector<SolidEntry> entries;
        std::vector<TextFault> faults;
        EXPECT_TRUE(readWholeFile("level/" + name + ".lev", text) && readLevelText(text, entries, faults)) << name;
        for (const TextFault& fault : faults)
            ADD_FAILURE() << name << ":" << fault.line << ": " << fault.text;
        for (const SolidEntry& entry : entries) {
            auto* const solid = new csgObject;
            EXPECT_TRUE(solid->load("./csg/" + entry.name)) << name << ": " << entry.name;
            placeSolid(*solid, entry);
            if (solids.empty())
                box = solid->getLocalBounds();
            else
                box.merge(solid->getLocalBounds());
            root.addChild(solid);
            solids.push_back(solid);
        }
        root.update();
    }

    /// Where a worm dropped at a random place comes to rest.
    Vector3 drop() {
        const float x = box.min.x + static_cast<float>(crtRand()) / 32767.0f * (box.max.x - box.min.x);
        const float z = box.min.z + static_cast<float>(crtRand()) / 32767.0f * (box.max.z - box.min.z);
        CollisionPacket packet;
        packet.radius = Vector3(2.0f, 5.0f, 2.0f);
        packet.worldVelocity = Vector3(0.0f, -10000.0f, 0.0f);
        packet.worldPosition = Vector3(x, box.max.y + 20.0f, z);
        theModuleManager->getCollisionDetection()->moveToContact(&packet, &root);
        return packet.worldPosition;
    }
};

TEST(LevelData, DropsLandDryOnMostOfEveryLevel) {
    const ShippedData data;
    const TestServices services;
    for (const std::string& name : levelNames()) {
        Level level(name);
        EXPECT_GE(level.solids.size(), 2u) << name;
        crtSrand(11);
        int landed = 0;
        float lowest = 1e9f;
        for (int i = 0; i < 1000; ++i) {
            const float y = level.drop().y;
            if (y < -10.0f)
                continue;
            ++landed;
            lowest = std::min(lowest, y);
        }
        EXPECT_GE(landed, 600) << name;
        EXPECT_GE(lowest, 1.0f) << name;
    }
}

TEST(LevelData, CratersLeaveEveryLandClosed) {
    const ShippedData data;
    const TestServices services;
    for (const std::string& name : levelNames()) {
        Level level(name);
        crtSrand(12);
        for (int hits = 0; hits < 12;) {
            const Vector3 at = level.drop();
            if (at.y < -10.0f)
                continue;
            ++hits;
            double carvedByAll = 0;
            for (csgObject* const solid : level.solids) {
                const double before = volumeOf(*solid);
                csgObject tool;
                ASSERT_TRUE(tool.load("./csg/sphere"));
                tool.translate(static_cast<double>(at.x), static_cast<double>(at.y), static_cast<double>(at.z));
                const double toolVolume = volumeOf(tool);
                solid->subtract(tool);
                EXPECT_LE(measureOpenEdges(*solid).widestGap, 1e-6)
                    << name << " at " << at.x << ' ' << at.y << ' ' << at.z;
                const double carved = before - volumeOf(*solid);
                carvedByAll += carved;
                EXPECT_TRUE(carved >= -1e-6 && carved <= toolVolume + 1e-6) << name << " lost " << carved;
            }
            EXPECT_GT(carvedByAll, 100.0) << name;
        }
    }
}

} // namespace
