#pragma once

#include "game/armoury/targeted_weapon.h"

/// Weapon 4: a press drops five rockets in a column above the target. The turn ends after the first of them; the others
/// still go off. The bomber's sound ends with the strike's last rocket.
class Airstrike : public TargetedWeapon {
public:
    static constexpr int index = 4;

    explicit Airstrike(Team* owningTeam);
    ~Airstrike() override;

private:
    void fire() override;
    void lastProjectileGone() override;
    void dropRockets();
};
