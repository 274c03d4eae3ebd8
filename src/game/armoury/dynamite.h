#pragma once

#include "game/play/weapon.h"

/// Weapon 2: a press drops a stick of dynamite in front of the worm.
class Dynamite : public Weapon {
public:
    static constexpr int index = 2;

    explicit Dynamite(Team* owningTeam);
    ~Dynamite() override;

private:
    bool showMarks() override;
    void fire() override;
};
