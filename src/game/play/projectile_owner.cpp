#include "game/play/projectile_owner.h"

ProjectileOwner::~ProjectileOwner() {
    disownProjectiles();
}

void ProjectileOwner::disownProjectiles() {
    for (OwnedShot* const shot : inFlight)
        shot->owner = nullptr;
    inFlight.clear();
}

OwnedShot::OwnedShot(ProjectileOwner* firedBy) : owner(firedBy) {
    if (owner != nullptr)
        owner->inFlight.push_back(this);
}

void OwnedShot::takeLeave() {
    if (owner == nullptr)
        return;
    std::erase(owner->inFlight, this);
    owner->projectileFinished();
    owner = nullptr;
}
