#pragma once

// A team of a round: its worms in turn order (the first has the turn when the team has it), its weapons with their
// ammunition, its name and colour.
//
// The worms are children of the scene root and leave through `removeWorm`, which destroys the worm, passes the turn
// when it was its turn, and destroys the team itself when it was the last: the caller touches neither afterwards.
// Projectiles still in flight then lose their owner (see Weapon). The weapons belong to the team, also while a worm
// holds one as a child.
//
// Worms are dropped at random points of the level box. A drop that nothing catches is repeated, and so is one whose worm
// ends in its first update; after `dropAttemptsPerWorm` misses for one worm the team stays as small as it is, so a level
// without land cannot hang the game. Without worm names the worms are named after their team.

#include <array>
#include <memory>
#include <string>
#include <vector>

class BoundingBox;
class InputControl;
class Weapon;
class Worm;

/// A weapon and how often it can still be used in this round; -1 is without limit.
struct WeaponEntry {
    WeaponEntry(std::unique_ptr<Weapon> theWeapon, int theAmmo);
    ~WeaponEntry();

    std::unique_ptr<Weapon> weapon;
    int ammo;
};

using WeaponList = std::vector<std::unique_ptr<WeaponEntry>>;

class Team {
public:
    /// Misses in a row after which the placing of a worm is given up.
    static constexpr int dropAttemptsPerWorm = 10000;

    /// Drops the worms onto the landscape of the registered scene root and builds the weapon list. Colour from 0 to 1.
    Team(const std::string& teamName, const BoundingBox* levelBox, float r, float g, float b,
         const std::vector<std::string>& wormNames, unsigned wormCount);
    virtual ~Team();
    Team(const Team&) = delete;
    Team& operator=(const Team&) = delete;

    std::string getName() const { return name; }
    /// Red, green, blue, alpha.
    const std::array<float, 4>& getColour() const { return colour; }
    const std::vector<Worm*>& getWorms() const { return worms; }
    const WeaponList& getWeapons() const { return weapons; }
    WeaponEntry& getWeaponEntry(std::size_t weaponIndex) { return *weapons[weaponIndex]; }

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
    void buildWeapons();
    void selectWeapon(WeaponEntry& entry);
    static void takeWeaponFrom(Worm& worm);

    std::array<float, 4> colour;
    WeaponList weapons;
    std::vector<Worm*> worms;
    std::string name;
    InputControl* input;
};
