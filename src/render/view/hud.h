#pragma once

// The head-up display: crosshair or target marker, the row of weapons with ammunition and numbers, the power bar and a
// message that stays for two seconds. `reset` at the start of every frame clears all but the message; whoever shows
// something sets it again in each frame. The weapon list belongs to a team, which clears it here when it ends.

#include "core/scene/weapon_entry.h"

#include <cstdint>
#include <string>

class Font;
class Texture;

class Hud {
public:
    /// Registers itself. Needs the renderer and its context.
    Hud();
    ~Hud();
    Hud(const Hud&) = delete;
    Hud& operator=(const Hud&) = delete;

    void showCrosshair();
    void hideCrosshair() { crosshairVisible = false; }
    void showTargetMarker();
    void armTargetMarker() { markerArmed = true; }
    void hideTargetMarker() { markerVisible = false; }
    void showPowerBar() { powerBarVisible = true; }
    void hidePowerBar() { powerBarVisible = false; }
    /// The bar is full at 1.
    void setPower(float value) { power = value; }
    void setWeaponList(const WeaponList* list) { weaponList = list; }
    void setSelectedWeapon(int index) { selectedWeapon = index; }
    void setMessage(const std::string& text);
    void reset();
    /// Draws over the finished scene; leaves lighting, depth test, culling and texturing on.
    void draw();

    bool isCrosshairVisible() const { return crosshairVisible; }
    bool isMarkerVisible() const { return markerVisible; }
    bool isMarkerArmed() const { return markerArmed; }
    bool isPowerBarVisible() const { return powerBarVisible; }
    float getPower() const { return power; }
    const WeaponList* getWeaponList() const { return weaponList; }
    int getSelectedWeapon() const { return selectedWeapon; }
    const std::string& getMessage() const { return message; }

private:
    void drawMarks() const;
    void drawWeaponIcons() const;
    void drawPowerBar();
    void printWeaponRow();
    void printMessage();

    std::unique_ptr<Font> bigFont;
    std::unique_ptr<Font> smallFont;
    Texture* hudTexture;
    bool crosshairVisible = false;
    bool powerBarVisible = false;
    float power = 0.0f;
    const WeaponList* weaponList = nullptr;
    std::string message;
    /// Tick at which the message was set, ms.
    std::uint32_t messageTime = 0;
    int selectedWeapon = -1;
    bool markerVisible = false;
    bool markerArmed = false;
};
