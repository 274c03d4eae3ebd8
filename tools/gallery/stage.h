#pragma once

// The game's services and window, set up as the game does, with a free camera and a hand on the shutter.

#include "render/math/vector3.h"

#include <string>

class Camera;
class SceneNode;

class Stage {
public:
    static constexpr int width = 640;
    static constexpr int height = 480;

    /// Pictures go into this directory.
    explicit Stage(std::string outputDirectory);
    ~Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    bool isOpen() const { return open; }
    const std::string& getDirectory() const { return directory; }
    /// Lets the scene advance by frames of the clock.
    void advance(int frames);
    /// Draws a node from an eye that looks at a target and saves the picture as `name`.
    void shoot(SceneNode& node, const Vector3& eye, const Vector3& target, const std::string& name);
    /// Draws the scene as a camera of its own shows it.
    void shootAs(Camera& camera, SceneNode& scene, const std::string& name);
    /// Shows one texture, once and as a tiled surface.
    void shootTexture(const std::string& textureName, const std::string& name);
    /// Pictures that could not be written.
    int getFailures() const { return failures; }

private:
    void save(const std::string& name);

    std::string directory;
    Camera* camera = nullptr;
    bool open = false;
    int failures = 0;
};
