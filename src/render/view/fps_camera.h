#pragma once

#include "game/collision/collision_packet.h"
#include "render/camera/camera.h"

class InputControl;

/// A free-flying camera: the mouse turns it, W, A, S and D fly it, and it slides along what it meets. A tool for
/// looking at levels; the game's own views are the worms' cameras.
class FPSCamera : public Camera {
public:
    FPSCamera();
    ~FPSCamera() override;

    void update() override;

private:
    void turn();
    void fly();

    InputControl* input;
    /// Radians, unbounded.
    float pitch = 0.0f;
    float yaw = 0.0f;
    CollisionPacket packet;
};
