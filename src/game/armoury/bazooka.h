#pragma once

// Weapon 0: held down, the fire button charges it; let go, or after the longest charge, a rocket leaves along the aim
// with a speed proportional to the charge. Between the launch and the button's release the power bar keeps the charge
// at the moment of the launch. A charge that leads to no launch (the weapon is put away, its worm ends, the keyboard
// goes to another window) is forgotten and its sound ends.

#include "game/play/weapon.h"

class Bazooka : public Weapon {
public:
    static constexpr int index = 0;

    explicit Bazooka(Team* owningTeam);
    ~Bazooka() override;

private:
    bool showMarks() override;
    void fire() override;
    void chargeForgotten() override;
    /// Charge in ms.
    void launch(std::uint32_t charge);

    /// Tick at which the fire button was pressed, ms.
    std::uint32_t chargeStart = 0;
    /// Charge of the last launch, ms.
    std::uint32_t launchCharge = 0;
};
