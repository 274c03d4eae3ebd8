#include "game/armoury/armoury.h"

#include "game/armoury/airstrike.h"
#include "game/armoury/bazooka.h"
#include "game/armoury/beam.h"
#include "game/armoury/dynamite.h"
#include "game/armoury/shotgun.h"

namespace {

constexpr int unlimited = -1;

template <class Kind>
void issue(WeaponList& list, Team* owner, int ammo) {
    list.emplace_back(new WeaponEntry{std::make_unique<Kind>(owner), ammo});
}

} // namespace

WeaponList issueWeapons(Team* owner) {
    WeaponList list;
    issue<Bazooka>(list, owner, unlimited);
    issue<Shotgun>(list, owner, 2);
    issue<Dynamite>(list, owner, 1);
    issue<Beam>(list, owner, 1);
    issue<Airstrike>(list, owner, 1);
    return list;
}
