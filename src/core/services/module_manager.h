#pragma once

// The service registry: the one way to reach the single instance of each subsystem.
//
// A service registers itself from its own constructor; a setter overwrites its slot without destroying what it held.
// The registry owns nothing while the game runs; its destructor destroys what is registered, in a fixed order. The
// camera slot may be empty at any time and is cleared by the camera that held it; the scene root and the team manager
// are replaced at every new round. A getter of an empty slot answers null.

class Camera;
class CollisionDetection;
class Hud;
class InputControl;
class Renderer;
class SceneNode;
class SoundControl;
class TeamManager;
class TextureLoader;
class TextureManager;
class Timer;

class ModuleManager {
public:
    ModuleManager();
    /// Destroys the services: sound, HUD, scene, teams, texture loader, textures, renderer, camera, input, timer,
    /// collision detection (core/app/services.cpp, which knows them).
    ~ModuleManager();
    ModuleManager(const ModuleManager&) = delete;
    ModuleManager& operator=(const ModuleManager&) = delete;

    Renderer* getRenderer() const { return renderer; }
    void setRenderer(Renderer* service) { renderer = service; }
    TextureManager* getTextureManager() const { return textureManager; }
    void setTextureManager(TextureManager* service) { textureManager = service; }
    InputControl* getInputControl() const { return inputControl; }
    void setInputControl(InputControl* service) { inputControl = service; }
    Timer* getTimer() const { return timer; }
    void setTimer(Timer* service) { timer = service; }
    TextureLoader* getTextureLoader() const { return textureLoader; }
    void setTextureLoader(TextureLoader* service) { textureLoader = service; }
    CollisionDetection* getCollisionDetection() const { return collisionDetection; }
    void setCollisionDetection(CollisionDetection* service) { collisionDetection = service; }
    Camera* getCamera() const { return camera; }
    void setCamera(Camera* active) { camera = active; }
    SceneNode* getSceneRoot() const { return sceneRoot; }
    void setSceneRoot(SceneNode* root) { sceneRoot = root; }
    TeamManager* getTeamManager() const { return teamManager; }
    void setTeamManager(TeamManager* service) { teamManager = service; }
    Hud* getHud() const { return hud; }
    void setHud(Hud* service) { hud = service; }
    SoundControl* getSoundControl() const { return soundControl; }
    void setSoundControl(SoundControl* service) { soundControl = service; }

private:
    Renderer* renderer = nullptr;
    TextureManager* textureManager = nullptr;
    InputControl* inputControl = nullptr;
    Timer* timer = nullptr;
    TextureLoader* textureLoader = nullptr;
    CollisionDetection* collisionDetection = nullptr;
    Camera* camera = nullptr;
    SceneNode* sceneRoot = nullptr;
    TeamManager* teamManager = nullptr;
    Hud* hud = nullptr;
    SoundControl* soundControl = nullptr;
};

/// There from the start of the services to their end (core/app/services.h), and null outside of that.
extern ModuleManager* theModuleManager;
