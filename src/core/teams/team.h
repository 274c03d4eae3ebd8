#pragma once

// A team of a round: its worms in turn order (the first has the turn when the team has it), its weapons with their
// ammunition, its name and colour.
//
// The worms are children of the scene root and leave through `removeWorm`, which destroys the worm, passes the turn
// when it was its turn, and destroys the team itself when it was the last: the caller touches neither afterwards.
// Projectiles still in flight then lose their owner (see Weapon). The weapons belong to the team, also while a worm
// holds one as a child.
//
// Worms are dropped at random points of the level box. A drop that nothing catches is repeated, and so is one whose
// worm ends in its first update; after `dropAttemptsPerWorm` misses for one worm the team stays as small as it is, so a
// level without land cannot hang the game. Without worm names the worms are named after their team.

#include "core/base/expect.h"
#include "core/scene/weapon_entry.h"

#include <array>
#include <string>
#include <vector>

class BoundingBox;
class InputControl;
class Worm;

class Team {
public:
    /// Misses in a row after which the placing of a worm is given up.
    static constexpr int dropAttemptsPerWorm = 10000;

    /// Drops the worms onto the landscape of the registered scene root and takes the weapons that the armoury makes.
    /// Colour from 0 to 1.
    Team(const std::string& teamName, const BoundingBox* levelBox, float r, float g, float b,
         const std::vector<std::string>& wormNames, unsigned wormCount, Armoury armoury);
    virtual ~Team();
    Team(const Team&) = delete;
    Team& operator=(const Team&) = delete;

    std::string getName() const { return name; }
    /// Red, green, blue, alpha.
    const std::array<float, 4>& getColour() const { return colour; }
    const std::vector<Worm*>& getWorms() const { return worms; }
    const WeaponList& getWeapons() const { return weapons; }
    WeaponEntry& getWeaponEntry(std::size_t weaponIndex) {
        expect(weaponIndex < weapons.size());
        return *weapons[weaponIndex];
    }

    /// The worm whose turn it is when the team has the turn; null without worms.
    Worm* getCurrentWorm() const;
    /// Passes the turn within the team.
    void nextWorm();
    /// Takes a dead worm out of the game; may destroy this team.
    void removeWorm(Worm* worm);
    /// Hands the weapon whose key is held to the current worm, unless the one in its hand has fired or the other is
    /// spent.
    void handleWeaponKeys();

private:
    void dropWorms(const BoundingBox& levelBox, const std::vector<std::string>& wormNames, unsigned wormCount);
    void selectWeapon(WeaponEntry& entry);
    static void takeWeaponFrom(Worm& worm);

    std::array<float, 4> colour;
    WeaponList weapons;
    std::vector<Worm*> worms;
    std::string name;
    InputControl* input;
};
