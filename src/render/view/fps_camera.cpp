#include "render/view/fps_camera.h"

#include "core/base/log.h"
#include "core/services/input_control.h"
#include "core/services/module_manager.h"
#include "core/services/timer.h"
#include "game/collision/collision_detection.h"

namespace {

/// World units per second.
constexpr float flightSpeed = 15.0f;
/// Mouse motion units per pixel: twice the worms', for looking around quickly.
constexpr float flightSensitivity = 0.01f;

} // namespace

FPSCamera::FPSCamera() : input(theModuleManager->getInputControl()) {
    logLine(" Calling FPSCamera Konstruktor \n");
    input->setMouseSensitivity(flightSensitivity);
    packet.radius = Vector3(2.0f, 6.0f, 2.0f);
    packet.worldPosition = Vector3(0.0f, 1.0f, -1.0f);
}

FPSCamera::~FPSCamera() {
    logLine(" Calling FPSCamera Destruktor \n");
    if (theModuleManager->getCamera() == this)
        theModuleManager->setCamera(nullptr);
}

void FPSCamera::update() {
    Camera::update();
    turn();
    fly();
}

void FPSCamera::turn() {
    yaw += input->getMouseDeltaX();
    pitch += input->getMouseDeltaY();
    const Vector3 tilted = rotationAbout(right, -pitch).transform(Vector3(0.0f, 0.0f, 1.0f));
    viewDirection = rotationAbout(up, -yaw).transform(tilted);
}

void FPSCamera::fly() {
    const Vector3 side = normalized(up.cross(viewDirection));
    Vector3 direction(0.0f, 0.0f, 0.0f);
    if (input->isKeyDown('W'))
        direction += viewDirection;
    if (input->isKeyDown('S'))
        direction -= viewDirection;
    if (input->isKeyDown('A'))
        direction += side;
    if (input->isKeyDown('D'))
        direction -= side;
    packet.worldVelocity = direction * theModuleManager->getTimer()->getFrameTime() * flightSpeed;
    theModuleManager->getCollisionDetection()->moveAndSlide(&packet, theModuleManager->getSceneRoot());
    setPosition(packet.worldPosition);
}
