#pragma once

// A scene node that sets the projection and view transforms for a frame and answers what they let one see.
//
// The eye is the parent's position plus the camera's own (a camera without a parent takes its own alone). `apply` needs
// the renderer's context. When the active camera is destroyed the registry's camera slot becomes empty.

#include "core/scene/scene_node.h"
#include "render/camera/frustrum.h"

class Renderer;

class Camera : public Frustrum, public SceneNode {
public:
    Camera();
    ~Camera() override;

    void update() override;

    /// Sets projection and view, keeps copies of both matrices, recomputes the frustum and puts the light back in
    /// place.
    virtual void apply();

    /// Direction of sight, any length but 0; the point looked at is the eye plus this.
    void setViewDirection(float x, float y, float z) { viewDirection = Vector3(x, y, z); }
    void setViewDirection(const Vector3& direction) { viewDirection = direction; }
    const Vector3& getViewDirection() const { return viewDirection; }
    /// Vertical field of view in degrees; false, and nothing changes, for 0 or less.
    bool setFov(float degrees);
    float getFov() const { return fov; }
    bool setNearPlane(float distance);
    bool setFarPlane(float distance);
    float getNearPlane() const { return nearPlane; }
    float getFarPlane() const { return farPlane; }
    void setProjectionMatrix(const std::array<float, 16>& values) { projectionMatrix = Matrix(values); }
    void setModelviewMatrix(const std::array<float, 16>& values) { modelviewMatrix = Matrix(values); }
    /// GL_PROJECTION_MATRIX after the last `apply`.
    const Matrix& getProjectionMatrix() const { return projectionMatrix; }
    /// GL_MODELVIEW_MATRIX after the last `apply`: the view transform.
    const Matrix& getModelviewMatrix() const { return modelviewMatrix; }

protected:
    Vector3 viewDirection{0.0f, 0.0f, -1.0f};
    Vector3 up{0.0f, 1.0f, 0.0f};
    Vector3 right{1.0f, 0.0f, 0.0f};

private:
    float fov = 45.0f;
    float nearPlane = 0.1f;
    float farPlane = 3500.0f;
    Matrix projectionMatrix;
    Matrix modelviewMatrix;
    Renderer* renderer;
};

/// The axes along which a quad must lie to face the viewer: the active camera's, in world space.
struct BillboardAxes {
    Vector3 right;
    Vector3 up;
};
/// Taken from the registry's camera; the world's own axes when there is none.
BillboardAxes activeBillboardAxes();
