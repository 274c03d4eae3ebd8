#pragma once

// A team's weapons as those see them who show, choose and count them: the team owns the list, an armoury fills it when
// the team is made.

#include <memory>
#include <vector>

class Team;
class Weapon;

/// A weapon and how often it can still be used in this round; -1 is without limit.
struct WeaponEntry {
    std::unique_ptr<Weapon> weapon;
    int ammo;
};

/// In the order of the keys 1, 2, 3 and of the HUD's row.
using WeaponList = std::vector<std::unique_ptr<WeaponEntry>>;

/// Makes the weapons of a team.
using Armoury = WeaponList (*)(Team* owner);
