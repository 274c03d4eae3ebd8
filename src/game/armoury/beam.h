#pragma once

#include "game/armoury/targeted_weapon.h"

/// Weapon 3, the beamer: a press moves the current worm to the target and counts as a finished shot at once. The worm's
/// update then runs inside the weapon's own, which runs inside the worm's: the weapon starts its turn's end there, and
/// the worm, the team and the weapon may end there too.
class Beam : public TargetedWeapon {
public:
    static constexpr int index = 3;

    explicit Beam(Team* owningTeam);
    ~Beam() override;

private:
    void fire() override;
};
