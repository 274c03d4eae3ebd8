#include "render/view/hud.h"

#include "core/base/log.h"
#include "core/services/module_manager.h"
#include "core/services/timer.h"
#include "platform/gl.h"
#include "render/device/texture.h"
#include "render/device/texture_manager.h"
#include "render/view/font.h"

namespace {

/// How long a message stays, ms.
constexpr std::int32_t messageDuration = 2000;
/// Side of a cell of the 8 x 8 icon grid in texture coordinates.
constexpr float iconCell = 0.125f;

/// A rectangle on the screen in normalised device coordinates.
struct ScreenRectangle {
    float left, bottom, right, top;
};

constexpr ScreenRectangle centreMark{-0.1f, -0.12f, 0.1f, 0.12f};

/// A place in the row of weapons is this wide, as a fraction of the screen.
constexpr float placeWidth = 0.125f;

/// Middle of a weapon's place, as a fraction of the screen: the row stands in the middle of it.
float placeOf(std::size_t weapon, std::size_t weapons) {
    return 0.5f + (static_cast<float>(weapon) - 0.5f * static_cast<float>(weapons) + 0.5f) * placeWidth;
}

/// A quad with the icon of a cell; the first row of the grid is the first of the file, so t grows downwards.
void drawIcon(const ScreenRectangle& place, int column, int row) {
    const float s0 = static_cast<float>(column) * iconCell;
    const float s1 = s0 + iconCell;
    const float t0 = static_cast<float>(row) * iconCell;
    const float t1 = t0 + iconCell;
    glBegin(GL_QUADS);
    glTexCoord2f(s0, t1);
    glVertex2f(place.left, place.bottom);
    glTexCoord2f(s1, t1);
    glVertex2f(place.right, place.bottom);
    glTexCoord2f(s1, t0);
    glVertex2f(place.right, place.top);
    glTexCoord2f(s0, t0);
    glVertex2f(place.left, place.top);
    glEnd();
}

} // namespace

Hud::Hud() : bigFont(std::make_unique<Font>("font", 3.0f)), smallFont(std::make_unique<Font>("font", 1.5f)) {
    logLine("Hud Constructed\n");
    theModuleManager->setHud(this);
    smallFont->setColor(0.8f, 0.8f, 0.8f, 0.8f);
    hudTexture = theModuleManager->getTextureManager()->getTexture("hud");
}

Hud::~Hud() {
    logLine("Hud Destructed\n");
}

void Hud::showCrosshair() {
    crosshairVisible = true;
    markerVisible = false;
}

void Hud::showTargetMarker() {
    markerVisible = true;
    crosshairVisible = false;
}

void Hud::setMessage(const std::string& text) {
    message = text;
    messageTime = theModuleManager->getTimer()->getLastTick();
}

void Hud::reset() {
    power = 0.0f;
    crosshairVisible = false;
    powerBarVisible = false;
    markerVisible = false;
    markerArmed = false;
    weaponList = nullptr;
    selectedWeapon = -1;
}

void Hud::draw() {
    glDisable(GL_LIGHTING);
    glDisable(GL_DEPTH_TEST);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glEnable(GL_TEXTURE_2D);
    if (hudTexture != nullptr)
        hudTexture->bind();
    glDisable(GL_CULL_FACE);

    drawMarks();
    drawWeaponIcons();
    drawPowerBar();

    glEnable(GL_CULL_FACE);
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_LIGHTING);
    printWeaponRow();
    printMessage();
}

void Hud::drawMarks() const {
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    if (crosshairVisible)
        drawIcon(centreMark, 0, 0);
    if (markerVisible) {
        if (markerArmed)
            glColor4f(1.0f, 0.5f, 0.5f, 0.9f);
        else
            glColor4f(0.5f, 0.5f, 1.0f, 0.9f);
        drawIcon(centreMark, 0, 1);
    }
}

void Hud::drawWeaponIcons() const {
    if (weaponList == nullptr)
        return;
    for (std::size_t k = 0; k < weaponList->size(); ++k) {
        const float centre = 2.0f * placeOf(k, weaponList->size()) - 1.0f;
        const float brightness = (*weaponList)[k]->ammo != 0 ? 1.0f : 0.0f;
        glColor4f(brightness, brightness, brightness, 0.9f);
        drawIcon({centre - placeWidth, -0.825f, centre + placeWidth, -0.575f}, 1, static_cast<int>(k));
    }
}

void Hud::drawPowerBar() {
    glDisable(GL_TEXTURE_2D);
    if (powerBarVisible) {
        const float right = -0.25f + 0.5f * power;
        glColor4f(1.0f, 0.0f, 0.0f, 0.8f);
        glBegin(GL_QUADS);
        glVertex2f(-0.25f, -0.5f);
        glVertex2f(right, -0.5f);
        glVertex2f(right, -0.4f);
        glVertex2f(-0.25f, -0.4f);
        glEnd();
    }
    glEnable(GL_TEXTURE_2D);
    if (powerBarVisible)
        bigFont->print(0.5f, 0.242f, "Power", TextAlignment::centre);
}

void Hud::printWeaponRow() {
    if (weaponList == nullptr)
        return;
    for (std::size_t k = 0; k < weaponList->size(); ++k) {
        const float x = placeOf(k, weaponList->size());
        const int ammo = (*weaponList)[k]->ammo;
        if (ammo >= 0)
            bigFont->print(x, 0.1f, std::to_string(ammo), TextAlignment::left);
        if (static_cast<int>(k) == selectedWeapon)
            smallFont->setColor(1.0f, 0.0f, 0.0f, 1.0f);
        else
            smallFont->setColor(0.8f, 0.8f, 0.8f, 0.8f);
        smallFont->print(x - 0.055f, 0.175f, std::to_string(k + 1), TextAlignment::left);
    }
}

void Hud::printMessage() {
    if (message.empty())
        return;
    if (ticksBetween(messageTime, theModuleManager->getTimer()->getLastTick()) > messageDuration) {
        message.clear();
        messageTime = 0;
        return;
    }
    bigFont->print(0.5f, 0.8f, message, TextAlignment::centre);
}
