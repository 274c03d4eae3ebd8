#pragma once

/// Something with hit points.
class Damageable {
public:
    explicit Damageable(float initialHealth) : health(initialHealth) {}
    virtual ~Damageable() = default;
    Damageable(const Damageable&) = delete;
    Damageable& operator=(const Damageable&) = delete;

    /// The object that blasts hurt, or null when this one takes no damage.
    virtual Damageable* getDamageableNode() = 0;

    float getHealth() const { return health; }
    /// Takes hit points away, down to 0 at the lowest; a negative amount heals without an upper limit.
    void applyDamage(float amount);

protected:
    float health;
};
