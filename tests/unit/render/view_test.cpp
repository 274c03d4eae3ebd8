// What is drawn over the scene and between the land and the worms.

#include "core/services/timer.h"
#include "core/teams/team.h"
#include "game/armoury/armoury.h"
#include "game/play/weapon.h"
#include "render/camera/camera.h"
#include "render/view/font.h"
#include "render/view/hud.h"
#include "render/view/label_node.h"
#include "render/view/static_mesh.h"
#include "render/view/water_node.h"
#include "support/play.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>

namespace {

class View : public testing::Test {
protected:
    TestData data;
    TestServices services;
    Hud& hud = *theModuleManager->getHud();

    std::vector<headless::GlPrimitive> drawn() {
        headless::recordGl(true);
        const std::vector<headless::GlPrimitive> primitives = captured([this] { hud.draw(); });
        texts = printedTexts();
        headless::recordGl(false);
        for (const GLenum capability :
             std::initializer_list<GLenum>{GL_LIGHTING, GL_DEPTH_TEST, GL_CULL_FACE, GL_TEXTURE_2D})
            EXPECT_TRUE(headless::glEnabled(capability)) << capability;
        EXPECT_EQ(headless::glState().projection.size(), 1u);
        EXPECT_TRUE(headless::problems().empty());
        return primitives;
    }

    static std::vector<std::vector<double>> recorded(const std::string& name) {
        std::vector<std::vector<double>> found;
        for (const headless::GlRecord& record : headless::glRecords())
            if (record.name == name)
                found.push_back(record.arguments);
        return found;
    }

    std::vector<std::string> texts;
};

TEST_F(View, TextStandsWhereItsFractionSaysInGlyphsOfItsCells) {
    Font font("font", 3.0f);
    EXPECT_FLOAT_EQ(font.getAdvance(), 24.0f / 1024.0f);
    const std::pair<TextAlignment, float> cases[] = {
        {TextAlignment::left, 512.0f}, {TextAlignment::right, 440.0f}, {TextAlignment::centre, 476.0f}};
    for (const auto& [alignment, left] : cases) {
        const auto glyphs = captured([&, alignment = alignment] { font.print(0.5f, 0.25f, "A\xE4p", alignment); });
        ASSERT_EQ(glyphs.size(), 3u);
        for (std::size_t i = 0; i < 3; ++i) {
            const auto [x, y, depth] = headless::windowPosition(glyphs[i], 0);
            EXPECT_NEAR(x, left + 24.0f * static_cast<float>(i), 0.05f);
            EXPECT_NEAR(y, 192.0f, 0.05f);
        }
        // 'A' is 65: column 1, row 4; its quad's first corner is the lower left.
        EXPECT_EQ(glyphs[0].coordinates[0], (std::array<float, 2>{1.0f / 16.0f, 1.0f - 5.0f / 16.0f}));
        // The byte 0xE4 is 228, not negative: column 4, row 14.
        EXPECT_EQ(glyphs[1].coordinates[0], (std::array<float, 2>{4.0f / 16.0f, 1.0f - 15.0f / 16.0f}));
    }
}

TEST_F(View, MarkerAndCrosshairExcludeOneAnother) {
    const auto expectMark = [this](const headless::Float4& color, float t) {
        const auto primitives = drawn();
        ASSERT_EQ(primitives.size(), 1u);
        EXPECT_EQ(primitives[0].color, color);
        EXPECT_EQ(primitives[0].coordinates[0], (std::array<float, 2>{0, t}));
    };
    EXPECT_TRUE(drawn().empty());
    hud.showCrosshair();
    expectMark({1, 1, 1, 1}, 0.125f);
    hud.showTargetMarker();
    expectMark({0.5f, 0.5f, 1, 0.9f}, 0.25f);
    hud.armTargetMarker();
    expectMark({1, 0.5f, 0.5f, 0.9f}, 0.25f);
    hud.showCrosshair();
    expectMark({1, 1, 1, 1}, 0.125f);
    hud.reset();
    EXPECT_TRUE(drawn().empty());
    hud.showTargetMarker();
    expectMark({0.5f, 0.5f, 1, 0.9f}, 0.25f); // disarmed
}

TEST_F(View, TheWeaponRowShowsAmmunitionAndSelectionWhileItsTeamLives) {
    const BoundingBox nowhere;
    auto team = std::make_unique<Team>("team", &nowhere, 1, 1, 1, std::vector<std::string>(), 0, issueWeapons);
    team->getWeaponEntry(2).ammo = 0;
    hud.setSelectedWeapon(1);
    for (const bool selected : {true, false}) {
        hud.setWeaponList(&team->getWeapons());
        const auto primitives = drawn();
        ASSERT_EQ(primitives.size(), 5u + 9u);
        for (std::size_t k = 0; k < 5; ++k) {
            const float centre = (primitives[k].vertices[0][0] + primitives[k].vertices[1][0]) / 2;
            EXPECT_NEAR(centre, -0.5f + 0.25f * static_cast<float>(k), 1e-5f);
            EXPECT_EQ(primitives[k].color[0], k == 2 ? 0.0f : 1.0f);
        }
        // The unlimited bazooka shows no count.
        EXPECT_EQ(texts, (std::vector<std::string>{"1", "2", "2", "0", "3", "1", "4", "1", "5"}));
        EXPECT_EQ(primitives[5 + 2].color[1] == 0.0f, selected) << "the number of the one in hand is red";
        EXPECT_NE(primitives[5].color[1], 0.0f);
        hud.reset();
    }
    hud.setWeaponList(&team->getWeapons());
    team.reset();
    EXPECT_TRUE(drawn().empty());
}

TEST_F(View, ThePowerBarGrowsFromTheLeftAndAMessageStaysForTwoSeconds) {
    services.tick(100);
    hud.showPowerBar();
    hud.setPower(0.75f);
    hud.setMessage("hello");
    services.tick(2000);
    const auto primitives = drawn();
    EXPECT_EQ(texts, (std::vector<std::string>{"Power", "hello"}));
    EXPECT_EQ(primitives.at(0).texture, 0u);
    EXPECT_FLOAT_EQ(primitives.at(0).vertices[0][0], -0.25f);
    EXPECT_FLOAT_EQ(primitives.at(0).vertices[1][0], 0.125f);
    hud.hidePowerBar();
    services.tick(1);
    EXPECT_TRUE(drawn().empty());
    EXPECT_EQ(hud.getMessage(), "");
}

TEST_F(View, TheSeaDriftsInTwoLayersEvenAfterWeeks) {
    WaterNode water;
    for (const unsigned milliseconds : {0u, 10000u, 25u * 24 * 3600 * 1000, 16u, 16u}) {
        services.tick(milliseconds);
        water.update();
        headless::recordGl(true);
        water.draw();
        // Corners in turn: how far right and back they lie.
        const double corners[4][2] = {{0, 1}, {0, 0}, {1, 0}, {1, 1}};
        const auto coordinates = recorded("glMultiTexCoord2fARB");
        const auto vertices = recorded("glVertex3f");
        ASSERT_EQ(coordinates.size(), 8u);
        const double angle = theModuleManager->getTimer()->getLastTick() / 10000.0;
        const double s = std::sin(angle);
        const double c = std::cos(angle);
        for (std::size_t i = 0; i < 4; ++i) {
            const auto [right, back] = corners[i];
            EXPECT_EQ(vertices.at(i), (std::vector<double>{6000 * right - 3000, 0, 3000 - 6000 * back}));
            const double expected[] = {s + 100 * right, c + 100 * back, c + 0.5 + 150 * back,
                                       s + 0.5 + 150 * (1 - right)};
            for (std::size_t k = 0; k < 4; ++k)
                EXPECT_NEAR(coordinates[2 * i + k / 2][1 + k % 2], expected[k], 1e-6 + 1e-7 * expected[k])
                    << i << ' ' << k;
        }
        headless::recordGl(false);
    }
}

TEST_F(View, WithoutMultitextureOneLayerIsDrawn) {
    headless::setGlExtensions("");
    WaterNode water;
    headless::recordGl(true);
    water.draw();
    headless::recordGl(false);
    EXPECT_TRUE(recorded("glMultiTexCoord2fARB").empty());
    EXPECT_EQ(recorded("glTexCoord2f").size(), 4u);
    EXPECT_TRUE(headless::problems().empty());
}

TEST_F(View, ALabelIsCentredAndFacesTheViewer) {
    auto* const camera = new Camera;
    theModuleManager->getSceneRoot()->addChild(camera);
    camera->setViewDirection(1, 0, 0); // right is +Z then
    camera->apply();
    theModuleManager->setCamera(camera);
    LabelNode label;
    label.setPosition(50, 7, 3);
    label.update();
    // A glyph of 4, and advances of 2 for the others.
    const std::pair<const char*, float> cases[] = {{"A", 2.0f}, {"\xC4rge", 5.0f}, {"", 0.0f}};
    for (const auto& [text, half] : cases) {
        label.setText(text);
        const headless::GlPrimitive quads = captured([&label] { label.draw(); }).at(0);
        EXPECT_FALSE(quads.lighting);
        if (quads.vertices.empty())
            continue;
        BoundingBox box(Vector3(quads.vertices[0].data()), Vector3(quads.vertices[0].data()));
        for (const auto& v : quads.vertices)
            box.extend(v[0], v[1], v[2]);
        EXPECT_LT((box.min - Vector3(50, 5, 3 - half)).length(), 1e-4f) << text;
        EXPECT_LT((box.max - Vector3(50, 9, 3 + half)).length(), 1e-4f) << text;
    }
}

TEST_F(View, AMeshIsDrawnWhenItIsWholeAndEmptyElse) {
    const auto load = [this](const char* text) {
        data.write("mesh/hut.msh", text);
        return std::make_unique<StaticMesh>("hut");
    };
    for (const char* const bad :
         {"-1", "2000000000", "1 -3", "1 2000000000 0 0 0", "1 1 0 0 0 0 0 1 0 0 1 wood", "1 1 0 0 0 0 0 1 0 0 -1 wood",
          "1 1 0 0 nan 0 0 1 0 0 0 wood", "1 1 0 0 0 0 0 -1 wood"})
        EXPECT_EQ(load(bad)->getGroupCount(), 0) << bad;
    const auto mesh = load("2\n3\n0 0 0 0 0\n1 2 3 1 0\n0 1 0 0.5 0.25\n1\n0 1 2\nwood\n"
                           "1\n5 5 5 0.5 0.5\n0\nstone\n");
    const auto groups = captured([&mesh] { mesh->draw(); });
    ASSERT_EQ(groups.size(), 2u);
    EXPECT_EQ(groups[0].vertices, (std::vector<std::array<float, 3>>{{0, 0, 0}, {1, 2, 3}, {0, 1, 0}}));
    EXPECT_EQ(groups[0].coordinates[2], (std::array<float, 2>{0.5f, 0.25f}));
    EXPECT_TRUE(groups[1].vertices.empty());
}

} // namespace
