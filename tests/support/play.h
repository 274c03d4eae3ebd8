#pragma once

// What a player does, as scripts, and what a player sees.

#include "platform/headless/headless.h"
#include "support/script.h"

#include <functional>
#include <string>
#include <vector>

/// Holds a key for this many frames, and lets the release be seen.
Script holdKey(int virtualKey, unsigned frameCount);
/// Takes weapon 0 to 4 in hand.
Script takeWeapon(int index);
/// Moves the mouse until the active worm's aim has this pitch and yaw, radians.
Script aimAt(float pitch, float yaw);
/// Holds the fire button for this many frames.
Script pressFire(unsigned frameCount);
/// Takes a weapon, aims, and holds the fire button for this many frames.
Script fire(int weapon, float pitch, unsigned frameCount = 2, float yaw = 0.0f);
/// Fires the bazooka, charged for this many frames, and waits until another worm has the turn.
Script fireBazooka(float pitch, float yaw, unsigned chargeFrames);
/// Waits until another worm than the active one has the turn, or none.
Script awaitNextTurn(unsigned frameLimit = 2000);

/// What a piece of code draws.
std::vector<headless::GlPrimitive> captured(const std::function<void()>& draw);
/// Texts printed with the screen fonts in the frame that has just ended. Recording of GL calls must be on.
std::vector<std::string> printedTexts();
bool isPrinted(const std::string& text);
