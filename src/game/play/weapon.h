#pragma once

// The base of the five weapons and their part in a turn.
//
// While a worm holds a weapon as a child, the weapon's `update` reads the fire button, fires its shots, waits until the
// projectiles it counts on are gone, pauses and passes the turn. `update` is the same frame for all: base update, HUD
// highlight, the weapon's own marks, then either its firing step with the release of the button, or the end of the
// turn. A worm updates its children several times a frame; all timing therefore comes from ticks and flags.
//
// A weapon belongs to its team and dies with it. Projectiles in flight know it as their owner: they register at birth.
// A weapon that dies makes them ownerless, and so does one whose turn is abandoned: what they would report belongs to
// no later turn.

#include "core/scene/scene_node.h"
#include "game/play/projectile_owner.h"

#include <cstdint>
#include <string>

class InputControl;
class MilkShapeModel;
class Team;

class Weapon : public SceneNode, public ProjectileOwner {
public:
    ~Weapon() override;

    void update() override;

    /// Position in every team's weapon list and in the HUD's row.
    int getWeaponIndex() const { return weaponIndex; }
    std::uint32_t getShotsFired() const { return shotsFired; }
    std::uint32_t getShotsPerTurn() const { return shotsPerTurn; }
    std::uint32_t getProjectilesFinished() const { return projectilesFinished; }
    bool isTurnEnding() const { return turnEnding; }
    bool isCharging() const { return charging; }

    void projectileFinished() override;
    /// Forgets the turn under way, with its charge and what is in flight: its worm died.
    void abandonTurn();
    /// Forgets a charge that is building up, or the weapon would go off by itself in the next hand that takes it.
    void forgetCharge();

protected:
    /// Loads the model "./mesh/" + modelName as a child.
    Weapon(Team* owningTeam, int index, const std::string& modelName, const char* constructionLine);

    /// Sets the weapon's marks on the HUD; false ends the weapon's frame here.
    virtual bool showMarks() = 0;
    /// One frame of firing. May destroy the weapon.
    virtual void fire() = 0;
    /// The last projectile in flight is gone, or disowned.
    virtual void lastProjectileGone() {}
    /// A charge that was building up is forgotten.
    virtual void chargeForgotten() {}
    /// Whether a charge is building up: begun and not out yet.
    bool isBuildingUp() const { return charging && !fired; }

    /// Whether the view is that of the current worm's aim camera.
    bool isAimView() const;
    /// Whether a press may begin a shot: no shot under way and the button down.
    bool isTriggerPulled() const;
    /// The point that shots leave from: in front of the worm along its aim.
    Vector3 getMuzzle() const;
    const Vector3& getAim() const;
    std::uint32_t getNow() const;

    Team* team;
    InputControl* input;
    MilkShapeModel* model;
    std::uint32_t shotsFired = 0;
    std::uint32_t shotsPerTurn = 1;
    std::uint32_t projectilesFinished = 0;
    /// A press has begun a shot.
    bool charging = false;
    /// The shot has left, and the button is still down.
    bool fired = false;

private:
    void releaseButton();
    void endTurn();
    void passTurn();

    int weaponIndex;
    /// Tick at which the pause at the end of the turn began, ms.
    std::uint32_t turnEndTime = 0;
    bool turnEnding = false;
};
