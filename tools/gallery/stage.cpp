#include "stage.h"

#include "picture.h"

#include "core/app/services.h"
#include "core/scene/scene_node.h"
#include "core/services/module_manager.h"
#include "core/services/timer.h"
#include "platform/crt_random.h"
#include "platform/gl.h"
#include "render/camera/camera.h"
#include "render/device/renderer.h"
#include "render/device/texture.h"
#include "render/device/texture_manager.h"

#include <utility>

namespace {

LRESULT CALLBACK ignoreMessages(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return DefWindowProcA(window, message, wParam, lParam);
}

void pumpMessages() {
    MSG message{};
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE)
        DispatchMessageA(&message);
}

/// A square of the current texture, repeated so often on each side.
void drawSquare(float left, float right, float bottom, float top, float repeats) {
    glBegin(GL_QUADS);
    glTexCoord2f(0.0f, 0.0f);
    glVertex2f(left, bottom);
    glTexCoord2f(repeats, 0.0f);
    glVertex2f(right, bottom);
    glTexCoord2f(repeats, repeats);
    glVertex2f(right, top);
    glTexCoord2f(0.0f, repeats);
    glVertex2f(left, top);
    glEnd();
}

} // namespace

Stage::Stage(std::string outputDirectory) : directory(std::move(outputDirectory)) {
    startServices(ignoreMessages, nullptr);
    open = theModuleManager->getRenderer()->createWindow(false, width, height, 32, "Brackenmoor gallery");
    if (!open)
        return;
    startWindowServices();
    crtSrand(1);
    camera = new Camera;
}

Stage::~Stage() {
    delete camera;
    if (open)
        theModuleManager->getRenderer()->killWindow();
    endServices();
}

void Stage::advance(int frames) {
    for (int i = 0; i < frames; ++i) {
        pumpMessages();
        theModuleManager->getRenderer()->endFrame();
        theModuleManager->getTimer()->tick();
        if (SceneNode* const root = theModuleManager->getSceneRoot())
            root->update();
    }
}

void Stage::shoot(SceneNode& node, const Vector3& eye, const Vector3& target, const std::string& name) {
    camera->setPosition(eye);
    camera->setViewDirection(target - eye);
    shootAs(*camera, node, name);
}

void Stage::shootAs(Camera& view, SceneNode& scene, const std::string& name) {
    pumpMessages();
    Renderer* const renderer = theModuleManager->getRenderer();
    theModuleManager->setCamera(&view);
    renderer->beginFrame();
    scene.update();
    // The worm whose turn it is made its own camera the current one, and labels turn to that.
    theModuleManager->setCamera(&view);
    view.apply();
    scene.render(&view);
    save(name);
    renderer->endFrame();
    theModuleManager->getTimer()->tick();
}

void Stage::shootTexture(const std::string& textureName, const std::string& name) {
    Renderer* const renderer = theModuleManager->getRenderer();
    renderer->beginFrame();
    glDisable(GL_LIGHTING);
    glDisable(GL_CULL_FACE);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    if (Texture* const texture = theModuleManager->getTextureManager()->getTexture(textureName))
        texture->bind();
    drawSquare(-0.95f, -0.05f, -0.6f, 0.6f, 1.0f);
    drawSquare(0.05f, 0.95f, -0.6f, 0.6f, 3.0f);
    glEnable(GL_CULL_FACE);
    glEnable(GL_LIGHTING);
    save(name);
    renderer->endFrame();
}

void Stage::save(const std::string& name) {
    if (!savePicture(directory + "/" + name + ".ppm", width, height))
        ++failures;
}
