#pragma once

#include "game/play/weapon.h"

/// Weapon 1: two shots a turn, each a press of its own, with a pause between them.
class Shotgun : public Weapon {
public:
    static constexpr int index = 1;

    explicit Shotgun(Team* owningTeam);
    ~Shotgun() override;

private:
    bool showMarks() override;
    void fire() override;

    /// Tick of the last shot, at first of the construction, ms.
    std::uint32_t lastShotTime;
};
