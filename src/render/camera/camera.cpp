#include "render/camera/camera.h"

#include "core/base/expect.h"
#include "core/base/log.h"
#include "core/services/module_manager.h"
#include "platform/gl.h"
#include "render/device/renderer.h"

Camera::Camera() : SceneNode("<no name>") {
    logLine(" Calling Camera Konstruktor \n");
    renderer = theModuleManager->getRenderer();
    if (renderer == nullptr)
        logLine(" Camera: no renderer in ModuleManager found \n");
}

Camera::~Camera() {
    logLine(" Calling Camera Destruktor \n");
    if (theModuleManager->getCamera() == this)
        theModuleManager->setCamera(nullptr);
}

void Camera::update() {
    SceneNode::update();
}

void Camera::apply() {
    expect(viewDirection.length() > 0.0f);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    if (renderer != nullptr)
        gluPerspective(static_cast<double>(fov), static_cast<double>(renderer->getWidth() / renderer->getHeight()),
                       static_cast<double>(nearPlane), static_cast<double>(farPlane));
    glGetFloatv(GL_PROJECTION_MATRIX, projectionMatrix.data());

    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    Vector3 eye = getPosition();
    if (getParent() != nullptr)
        eye = getParent()->getPosition() + eye;
    const Vector3 target = eye + viewDirection;
    const auto wide = [](float value) { return static_cast<double>(value); };
    gluLookAt(wide(eye.x), wide(eye.y), wide(eye.z), wide(target.x), wide(target.y), wide(target.z), wide(up.x),
              wide(up.y), wide(up.z));
    glGetFloatv(GL_MODELVIEW_MATRIX, modelviewMatrix.data());

    calculate(projectionMatrix, modelviewMatrix);
    glLightfv(GL_LIGHT0, GL_POSITION, lightPosition.data());
}

bool Camera::setFov(float degrees) {
    if (degrees <= 0.0f)
        return false;
    fov = degrees;
    return true;
}

bool Camera::setNearPlane(float distance) {
    nearPlane = distance;
    return true;
}

bool Camera::setFarPlane(float distance) {
    farPlane = distance;
    return true;
}

BillboardAxes activeBillboardAxes() {
    const Camera* const camera = theModuleManager->getCamera();
    const Matrix m = camera != nullptr ? camera->getModelviewMatrix() : Matrix();
    return {Vector3(m[0], m[4], m[8]), Vector3(m[1], m[5], m[9])};
}
