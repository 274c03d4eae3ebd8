#include "core/team.h"
#include "game/weapon.h"
#include "platform/headless/headless.h"
#include "render/font.h"
#include "render/hud.h"
#include "support/play.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace {

class Overlay : public testing::Test {
protected:
    TestData data;
    TestServices services;
    Hud& hud = *theModuleManager->getHud();

    std::vector<headless::GlPrimitive> drawn() {
        headless::captureGeometry(true);
        headless::recordGl(true);
        hud.draw();
        std::vector<headless::GlPrimitive> primitives = headless::glPrimitives();
        texts = printedTexts();
        headless::recordGl(false);
        headless::captureGeometry(false);
        for (const GLenum capability :
             std::initializer_list<GLenum>{GL_LIGHTING, GL_DEPTH_TEST, GL_CULL_FACE, GL_TEXTURE_2D})
            EXPECT_TRUE(headless::glEnabled(capability)) << capability;
        EXPECT_EQ(headless::glState().projection.size(), 1u);
        EXPECT_TRUE(headless::problems().empty());
        return primitives;
    }

    std::vector<std::string> texts;
};

TEST_F(Overlay, TextStandsWhereItsFractionSays) {
    Font font("font", 3.0f);
    EXPECT_FLOAT_EQ(font.getAdvance(), 24.0f / 1024.0f);
    const auto firstGlyphLeft = [&](int alignment) {
        headless::captureGeometry(true);
        font.print(0.5f, 0.25f, "four", alignment);
        const float left =
            headless::glPrimitives().empty() ? -1.0f : headless::windowPosition(headless::glPrimitives()[0], 0)[0];
        const std::size_t glyphs = headless::glPrimitives().size();
        headless::captureGeometry(false);
        EXPECT_EQ(glyphs, left < 0.0f ? 0u : 4u);
        return left;
    };
    EXPECT_NEAR(firstGlyphLeft(alignLeft), 512.0f, 0.1f);
    EXPECT_NEAR(firstGlyphLeft(alignRight), 512.0f - 96.0f, 0.1f);
    EXPECT_NEAR(firstGlyphLeft(alignCentre), 512.0f - 48.0f, 0.1f);
    EXPECT_EQ(firstGlyphLeft(3), -1.0f);
}

TEST_F(Overlay, GlyphsComeFromTheirCellAndAdvanceByHalfAQuad) {
    Font font("font", 1.0f);
    headless::captureGeometry(true);
    font.print(0.0f, 0.0f, "A\xE4");
    const auto primitives = headless::glPrimitives();
    headless::captureGeometry(false);
    ASSERT_EQ(primitives.size(), 2u);
    // 'A' is 65: column 1, row 4; its quad's first corner is the lower left.
    EXPECT_FLOAT_EQ(primitives[0].coordinates[0][0], 1.0f / 16.0f);
    EXPECT_FLOAT_EQ(primitives[0].coordinates[0][1], 1.0f - 5.0f / 16.0f);
    // The byte 0xE4 is 228, not negative: column 4, row 14.
    EXPECT_FLOAT_EQ(primitives[1].coordinates[0][0], 4.0f / 16.0f);
    EXPECT_FLOAT_EQ(primitives[1].coordinates[0][1], 1.0f - 15.0f / 16.0f);
    const float advance = headless::windowPosition(primitives[1], 0)[0] - headless::windowPosition(primitives[0], 0)[0];
    EXPECT_NEAR(advance, 8.0f, 0.01f);
}

TEST_F(Overlay, MarkerAndCrosshairExcludeOneAnother) {
    EXPECT_TRUE(drawn().empty());
    hud.showCrosshair();
    auto primitives = drawn();
    ASSERT_EQ(primitives.size(), 1u);
    EXPECT_EQ(primitives[0].color, (headless::Float4{1, 1, 1, 1}));
    EXPECT_EQ(primitives[0].coordinates[0], (std::array<float, 2>{0, 0.125f}));
    hud.showTargetMarker();
    primitives = drawn();
    ASSERT_EQ(primitives.size(), 1u);
    EXPECT_EQ(primitives[0].color, (headless::Float4{0.5f, 0.5f, 1, 0.9f}));
    EXPECT_EQ(primitives[0].coordinates[2], (std::array<float, 2>{0.125f, 0.125f}));
    hud.armTargetMarker();
    EXPECT_EQ(drawn()[0].color, (headless::Float4{1, 0.5f, 0.5f, 0.9f}));
    hud.reset();
    EXPECT_TRUE(drawn().empty());
    hud.showTargetMarker();
    EXPECT_EQ(drawn()[0].color[2], 1.0f) << "reset disarms";
}

TEST_F(Overlay, TheWeaponRowShowsAmmunitionAndSelection) {
    const BoundingBox nowhere;
    Team team("team", &nowhere, 1, 1, 1, {}, 0);
    team.getWeaponEntry(2).ammo = 0;
    hud.setWeaponList(&team.getWeapons());
    hud.setSelectedWeapon(1);
    const auto primitives = drawn();
    ASSERT_GE(primitives.size(), 5u);
    for (std::size_t k = 0; k < 5; ++k) {
        const float centre = (primitives[k].vertices[0][0] + primitives[k].vertices[1][0]) / 2;
        EXPECT_NEAR(centre, -0.5f + 0.25f * static_cast<float>(k), 1e-5f);
        EXPECT_EQ(primitives[k].color[0], k == 2 ? 0.0f : 1.0f);
    }
    // The unlimited bazooka shows no count.
    EXPECT_EQ(texts, (std::vector<std::string>{"1", "2", "2", "0", "3", "1", "4", "1", "5"}));
}

TEST_F(Overlay, ATeamThatEndsTakesItsRowAway) {
    const BoundingBox nowhere;
    {
        Team team("team", &nowhere, 1, 1, 1, {}, 0);
        hud.setWeaponList(&team.getWeapons());
    }
    EXPECT_EQ(hud.getWeaponList(), nullptr);
    drawn();
}

TEST_F(Overlay, ThePowerBarGrowsFromTheLeft) {
    hud.showPowerBar();
    hud.setPower(0.5f);
    const auto primitives = drawn();
    ASSERT_GE(primitives.size(), 1u);
    EXPECT_EQ(primitives[0].texture, 0u);
    EXPECT_FLOAT_EQ(primitives[0].vertices[0][0], -0.25f);
    EXPECT_FLOAT_EQ(primitives[0].vertices[1][0], 0.0f);
    EXPECT_EQ(texts, std::vector<std::string>{"Power"});
}

TEST_F(Overlay, AMessageStaysForTwoSeconds) {
    services.tick(100);
    hud.setMessage("hello");
    services.tick(2000);
    drawn();
    EXPECT_EQ(texts, std::vector<std::string>{"hello"});
    services.tick(1);
    drawn();
    EXPECT_TRUE(texts.empty());
    EXPECT_EQ(hud.getMessage(), "");
}

} // namespace
