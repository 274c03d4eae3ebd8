#pragma once

// The tie between what was fired and what fired it, known to both and knowing neither: a shot registers with its owner
// at birth and takes leave at its end; an owner that dies, or whose turn is abandoned, disowns what is in flight.

#include <vector>

class OwnedShot;

class ProjectileOwner {
public:
    ProjectileOwner() = default;
    virtual ~ProjectileOwner();
    ProjectileOwner(const ProjectileOwner&) = delete;
    ProjectileOwner& operator=(const ProjectileOwner&) = delete;

    /// A projectile of this owner is gone.
    virtual void projectileFinished() = 0;

protected:
    bool hasProjectilesInFlight() const { return !inFlight.empty(); }
    /// What is in flight reports to nobody.
    void disownProjectiles();

private:
    friend class OwnedShot;

    std::vector<OwnedShot*> inFlight;
};

class OwnedShot {
public:
    /// The owner may be null.
    explicit OwnedShot(ProjectileOwner* firedBy);
    OwnedShot(const OwnedShot&) = delete;
    OwnedShot& operator=(const OwnedShot&) = delete;

    ProjectileOwner* getOwner() const { return owner; }

protected:
    ~OwnedShot() = default;
    /// Tells the owner, if there still is one, that the shot is over.
    void takeLeave();

private:
    friend class ProjectileOwner;

    ProjectileOwner* owner;
};
