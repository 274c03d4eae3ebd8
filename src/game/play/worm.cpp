#include "game/play/worm.h"

#include "core/base/expect.h"
#include "core/services/input_control.h"
#include "core/services/module_manager.h"
#include "core/services/sound_control.h"
#include "core/services/timer.h"
#include "core/teams/team.h"
#include "game/collision/collision_detection.h"
#include "game/play/weapon.h"
#include "game/play/world_laws.h"
#include "platform/win32.h"
#include "render/camera/camera.h"
#include "render/view/hud.h"
#include "render/view/label_node.h"
#include "render/view/milkshape_model.h"

#include <algorithm>
#include <cstdio>

namespace {

// Lengths are world units, times seconds, angles radians.

/// Constant: a fall does not accelerate.
const Vector3 fallVelocity(0.0f, -20.0f, 0.0f);
constexpr float jumpTakeOff = 40.0f;
constexpr float jumpDecay = 20.0f;
constexpr float walkSpeed = 15.0f;
constexpr float airborneWalkSpeed = 5.0f;
constexpr float mouseSensitivity = 0.005f;
constexpr float pitchLimit = 1.5f;
/// Nearly half a turn and nearly a quarter: the facings of the walking keys.
constexpr float turnBack = 3.1415f;
constexpr float turnAside = 1.56f;
const Vector3 labelOffset(0.0f, 10.0f, 0.0f);
const Vector3 cameraRadius(1.0f, 1.0f, 1.0f);
constexpr float boomStart = -5.0f;
constexpr float boomLength = -40.0f;
constexpr float overviewHeight = 70.0f;

constexpr const char* walkSound = "sound/sfx/Walk.wav";
constexpr const char* jumpSound = "sound/sfx/WORMSPRING.wav";
constexpr int wormChannel = 3;

Matrix facing(float angle) {
    Matrix rotation;
    rotation.rotationY(angle);
    return rotation;
}

} // namespace

Worm::Worm(const std::string& wormName, Team* owningTeam)
    : SceneNode(wormName),
      displayName(wormName),
      input(theModuleManager->getInputControl()),
      timer(theModuleManager->getTimer()),
      collision(theModuleManager->getCollisionDetection()),
      team(owningTeam) {
    expect(owningTeam != nullptr);
    label = new LabelNode;
    label->setColor(team->getColour().data());
    label->setText(displayName);
    label->setPosition(labelOffset);
    addChild(label);

    model = addModel(*this, "wurm");

    const auto addCamera = [this](const Vector3& position) {
        auto* const camera = new Camera;
        addChild(camera);
        camera->setPosition(position);
        camera->setViewDirection(0.0f, -1.0f, 1.0f);
        return camera;
    };
    followCamera = addCamera(Vector3(0.0f, 40.0f, -40.0f));
    overviewCamera = addCamera(Vector3(0.0f, 0.0f, 0.0f));
    aimCamera = addCamera(Vector3(0.0f, 0.0f, 0.0f));

    input->setMouseSensitivity(mouseSensitivity);
    bodyPacket.radius = wormBodyRadii;
}

Worm::~Worm() {
    for (const Camera* const camera : {followCamera, overviewCamera, aimCamera})
        if (theModuleManager->getCamera() == camera)
            theModuleManager->setCamera(nullptr);
    stopWalkSound();
    if (weapon != nullptr)
        removeChild(weapon);
}

void Worm::collide(CollisionPacket* packet) {
    if (packet != &cameraPacket)
        collision->checkSphere(packet, bodyPacket.worldPosition / packet->radius);
}

void Worm::render(Camera* camera) {
    if (camera != aimCamera)
        SceneNode::render(camera);
    else if (weapon != nullptr)
        weapon->render(camera);
}

void Worm::update() {
    const NodeWatch self(*this);
    SceneNode::update();
    if (self.isGone())
        return;

    char text[128];
    std::snprintf(text, sizeof text, "%s %.0f", displayName.c_str(), static_cast<double>(getHealth()));
    label->setText(text);

    fall();
    if (self.isGone())
        return;
    if (active)
        act();
    else
        model->setAnimation("idle");
    if (!self.isGone() && isDead())
        team->removeWorm(this);
}

void Worm::fall() {
    const float frameTime = timer->getFrameTime();
    Vector3 velocity = fallVelocity;
    if (jumping) {
        velocity += jumpVelocity;
        jumpVelocity.y -= jumpDecay * frameTime;
    }
    bodyPacket.worldPosition = getWorldPosition();
    bodyPacket.worldVelocity = velocity * frameTime;
    collision->moveToContact(&bodyPacket, theModuleManager->getSceneRoot());
    onGround = bodyPacket.foundCollision;
    if (jumping && onGround) {
        jumping = false;
        jumpVelocity = Vector3(0.0f, 0.0f, 0.0f);
    }
    setPosition(bodyPacket.worldPosition);
    SceneNode::update();
}

void Worm::act() {
    team->handleWeaponKeys();
    aim();
    bodyPacket.worldVelocity = Vector3(0.0f, 0.0f, 0.0f);
    chooseView();
    const bool moving = walkingDirection();
    soundWalk(moving);
    jump();
    if (!jumping)
        model->setAnimation(moving ? "walk" : "idle");
    walk();
    turnToAim();
    const NodeWatch self(*this);
    SceneNode::update();
    if (!self.isGone())
        placeCameras();
}

void Worm::aim() {
    yaw += input->getMouseDeltaX();
    pitch = std::clamp(pitch + input->getMouseDeltaY(), -pitchLimit, pitchLimit);
    const Vector3 tilted = rotationAbout(Vector3(1.0f, 0.0f, 0.0f), -pitch).transform(Vector3(0.0f, 0.0f, 1.0f));
    aimDirection = rotationAbout(Vector3(0.0f, 1.0f, 0.0f), -yaw).transform(tilted);
}

void Worm::chooseView() {
    Camera* view = followCamera;
    if (input->isKeyDown('Q'))
        view = aimCamera;
    else if (input->isKeyDown('E'))
        view = overviewCamera;
    theModuleManager->setCamera(view);
}

/// Adds up the keys held into the packet's velocity and turns the worm; false when none is held.
bool Worm::walkingDirection() {
    const Vector3 side = normalized(Vector3(0.0f, 1.0f, 0.0f).cross(aimDirection));
    bool moving = false;
    const auto step = [&](int key, const Vector3& direction, float angle) {
        if (!input->isKeyDown(key))
            return;
        bodyPacket.worldVelocity += direction;
        rotationMatrix = facing(angle);
        moving = true;
    };
    step('W', aimDirection, -yaw);
    step('S', aimDirection * -1.0f, turnBack - yaw);
    step('A', side, turnAside - yaw);
    step('D', side * -1.0f, -yaw - turnAside);
    return moving;
}

void Worm::soundWalk(bool moving) {
    if (moving && !walkSoundOn && !jumping) {
        theModuleManager->getSoundControl()->play(walkSound, true, wormChannel);
        walkSoundOn = true;
    } else if (!moving) {
        stopWalkSound();
    }
}

void Worm::stopWalkSound() {
    if (!walkSoundOn)
        return;
    if (SoundControl* const sound = theModuleManager->getSoundControl())
        sound->stop(walkSound);
    walkSoundOn = false;
}

void Worm::jump() {
    if (!input->isKeyDown(VK_SPACE) || !onGround || jumping)
        return;
    jumpVelocity.y = jumpTakeOff;
    jumping = true;
    model->setAnimation("jump");
    theModuleManager->getSoundControl()->stop(walkSound);
    theModuleManager->getSoundControl()->play(jumpSound, false, wormChannel);
    walkSoundOn = false;
}

void Worm::walk() {
    Vector3 direction = bodyPacket.worldVelocity;
    direction.y = 0.0f;
    direction.normalize();
    bodyPacket.worldVelocity = direction * (timer->getFrameTime() * (jumping ? airborneWalkSpeed : walkSpeed));
    bodyPacket.worldPosition = getWorldPosition();
    collision->moveAndSlide(&bodyPacket, theModuleManager->getSceneRoot());
    setPosition(bodyPacket.worldPosition);
}

void Worm::turnToAim() {
    if (theModuleManager->getCamera() == aimCamera)
        rotationMatrix = facing(-yaw);
    if (weapon != nullptr) {
        Matrix tilt;
        tilt.rotationX(-pitch);
        weapon->setRotationMatrix(tilt);
    }
}

void Worm::placeCameras() {
    const Vector3 position = getWorldPosition();
    overviewCamera->setViewDirection(aimDirection);
    overviewCamera->setPosition(0.0f, overviewHeight, 0.0f);
    aimCamera->setViewDirection(aimDirection);

    cameraPacket.radius = cameraRadius;
    cameraPacket.worldPosition = position + aimDirection * boomStart;
    cameraPacket.worldVelocity = aimDirection * boomLength;
    collision->moveToContact(&cameraPacket, theModuleManager->getSceneRoot());
    followCamera->setPosition(cameraPacket.worldPosition - position);
    followCamera->setViewDirection(position - cameraPacket.worldPosition);
    theModuleManager->getHud()->setWeaponList(&team->getWeapons());
}

bool Worm::overlaps(const Vector3& centre) const {
    return ((bodyPacket.worldPosition - centre) / wormBodyRadii).length() < 2.0f;
}

bool Worm::isDead() const {
    return bodyPacket.worldPosition.y < deathHeight || getHealth() <= 0.0f;
}

void Worm::setActive(bool on) {
    active = on;
    if (on) {
        if (theModuleManager->getCamera() != followCamera)
            theModuleManager->setCamera(followCamera);
        return;
    }
    stopWalkSound();
    if (theModuleManager->getCamera() == followCamera)
        theModuleManager->setCamera(nullptr);
}
