#pragma once

// What players play: a body with its model, a label over it that tells name and health, and three ways to look.
//
// Every worm falls and can be thrown by blasts; the active one also reads keys and mouse. A worm below the level or
// without health has itself removed by its team at the end of its `update`, which destroys it and perhaps the team. The
// update of the weapon in its hand runs inside the worm's own and may do the same (the beamer does), so nothing of the
// worm is touched after a base update without asking whether it still lives.
// The weapon in hand belongs to the team; whoever ends the turn or the worm clears `weapon` and takes the child off.

#include "core/scene/scene_node.h"
#include "game/collision/collision_packet.h"

#include <string>

class Camera;
class CollisionDetection;
class InputControl;
class LabelNode;
class MilkShapeModel;
class Team;
class Timer;
class Weapon;

class Worm : public SceneNode {
public:
    Worm(const std::string& wormName, Team* owningTeam);
    ~Worm() override;

    int getCollisionType() override { return 2; }
    /// Tests a mover against the body, except the worm's own camera boom.
    void collide(CollisionPacket* packet) override;
    /// In its own aim view a worm draws only the weapon in its hand.
    void render(Camera* camera) override;
    void update() override;
    Worm* asWorm() override { return this; }
    Damageable* getDamageableNode() override { return this; }

    /// Gives the worm the turn, or takes it: its follow camera becomes the view, or leaves it.
    void setActive(bool on);
    bool isActive() const { return active; }

    const std::string& getWormName() const { return displayName; }
    Team* getTeam() const { return team; }
    Camera* getFollowCamera() const { return followCamera; }
    Camera* getAimCamera() const { return aimCamera; }
    Camera* getOverviewCamera() const { return overviewCamera; }
    /// Unit vector; recomputed in every frame in which the worm has the turn.
    const Vector3& getAimDirection() const { return aimDirection; }
    /// Radians.
    float getPitch() const { return pitch; }
    float getYaw() const { return yaw; }
    bool isOnGround() const { return onGround; }
    /// Whether an ellipsoid with the body's radii, centred there, would overlap the body.
    bool overlaps(const Vector3& centre) const;
    const LabelNode& getLabel() const { return *label; }
    const MilkShapeModel& getModel() const { return *model; }

    /// The weapon in hand, or null; set by the team and by the weapon itself.
    Weapon* weapon = nullptr;
    /// Airborne after a jump or a blast.
    bool jumping = false;
    /// While airborne, in units per second; the constant fall comes on top.
    Vector3 jumpVelocity{0.0f, 0.0f, 0.0f};

private:
    void fall();
    void act();
    void aim();
    void chooseView();
    bool walkingDirection();
    void soundWalk(bool moving);
    void stopWalkSound();
    void jump();
    void walk();
    void turnToAim();
    void placeCameras();
    bool isDead() const;

    Camera* followCamera;
    Camera* aimCamera;
    Camera* overviewCamera;
    Vector3 aimDirection{0.0f, 0.0f, 0.0f};
    std::string displayName;
    InputControl* input;
    Timer* timer;
    float pitch = 0.0f;
    float yaw = 0.0f;
    bool active = false;
    bool onGround = false;
    bool walkSoundOn = false;
    LabelNode* label;
    CollisionDetection* collision;
    CollisionPacket cameraPacket;
    CollisionPacket bodyPacket;
    MilkShapeModel* model;
    Team* team;
};
