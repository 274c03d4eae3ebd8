#include "core/app/main_loop.h"

#include "core/app/game_loader.h"
#include "core/app/services.h"
#include "core/base/data_error.h"
#include "core/scene/scene_node.h"
#include "core/services/input_control.h"
#include "core/services/module_manager.h"
#include "core/services/sound_control.h"
#include "core/services/timer.h"
#include "core/teams/team.h"
#include "core/teams/team_manager.h"
#include "platform/crt_random.h"
#include "platform/gl.h"
#include "render/camera/camera.h"
#include "render/device/renderer.h"
#include "render/view/font.h"
#include "render/view/hud.h"

#include <cstdio>

namespace {

constexpr int screenWidth = 1024;
constexpr int screenHeight = 768;
constexpr int colourBits = 32;
/// Length of an interval over which frames are counted, ms, and how many of them make a second.
constexpr std::int32_t fpsInterval = 250;
constexpr int fpsIntervalsPerSecond = 4;

constexpr const char* musicFile = "sound/music/pirate1.wav";
constexpr int musicChannel = 0;

/// False while the window is minimised.
bool windowActive = true;
/// The frames-per-second figure.
char fpsText[32] = "";

void showMessage(const char* text) {
    theModuleManager->getHud()->setMessage(text);
}

} // namespace

LRESULT CALLBACK WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CLOSE:
        PostQuitMessage(0);
        return 0;
    case WM_SIZE:
        theModuleManager->getRenderer()->resize(LOWORD(lParam), HIWORD(lParam));
        return 0;
    case WM_ACTIVATE:
        windowActive = HIWORD(wParam) == 0;
        if (LOWORD(wParam) == WA_INACTIVE)
            theModuleManager->getInputControl()->loseKeyboard();
        return 0;
    case WM_SYSCOMMAND:
        if (wParam == SC_SCREENSAVE || wParam == SC_MONITORPOWER)
            return 0;
        break;
    default:
        break;
    }
    if (theModuleManager->getInputControl()->handleMessage(message, wParam, lParam))
        return 1;
    return DefWindowProcA(window, message, wParam, lParam);
}

MainLoop::MainLoop(HINSTANCE moduleInstance) : instance(moduleInstance) {}

MainLoop::~MainLoop() = default;

bool MainLoop::start() {
    forgetDataFaults();
    windowActive = true;
    frustumCulling = true;
    fpsText[0] = '\0';
    startServices(WndProc, instance);
    crtSrand(theModuleManager->getTimer()->getTickCount());
    if (!openWindow())
        return false;
    startWindowServices();
    readLevelList(levelNames);
    if (levelNames.empty()) {
        reportDataError("level/levels.lev", "the level list is missing or names no level");
        return false;
    }
    if (!loadRandomLevel())
        return false;
    createFonts();
    fpsFrameCount = 0;
    fpsTime = theModuleManager->getTimer()->getLastTick();
    theModuleManager->getSoundControl()->play(musicFile, true, musicChannel);
    return true;
}

bool MainLoop::openWindow() {
    Renderer* const renderer = theModuleManager->getRenderer();
    windowOpen = renderer->createWindow(false, screenWidth, screenHeight, colourBits, "Brackenmoor") &&
                 renderer->toggleFullscreen();
    return windowOpen;
}

bool MainLoop::loadRandomLevel() {
    GameLoader loader;
    beginRoundData();
    while (!levelNames.empty()) {
        const std::string name = levelNames[static_cast<std::size_t>(crtRand()) % levelNames.size()];
        sceneRoot = loader.loadLevel(name);
        if (sceneRoot != nullptr)
            return true;
        std::erase(levelNames, name);
    }
    reportDataError("level/levels.lev", "none of the levels can be played");
    return false;
}

void MainLoop::createFonts() {
    fpsFont = std::make_unique<Font>("font", 1.0f);
    fpsFont->setColor(1.0f, 1.0f, 1.0f, 0.3f);
    bannerFont = std::make_unique<Font>("font", 5.0f);
    bannerFont->setColor(1.0f, 0.0f, 0.0f, 1.0f);
    promptFont = std::make_unique<Font>("font", 3.0f);
    promptFont->setColor(0.0f, 1.0f, 1.0f, 0.8f);
}

bool MainLoop::run() {
    InputControl* const input = theModuleManager->getInputControl();
    Renderer* const renderer = theModuleManager->getRenderer();
    while (pumpMessages()) {
        if (!windowActive)
            continue;
        if (input->isKeyDown(VK_ESCAPE))
            return true;
        handleKeys();
        renderer->beginFrame();
        if (Hud* const hud = theModuleManager->getHud())
            hud->reset();
        sceneRoot->update();
        drawScene();
        if (showFps)
            fpsFont->print(0.95f, 0.95f, fpsText, TextAlignment::right);
        if (!handleRoundEnd())
            return false;
        countFrame();
        input->resetFrame();
        renderer->endFrame();
        theModuleManager->getTimer()->tick();
    }
    return true;
}

bool MainLoop::pumpMessages() {
    while (PeekMessageA(&lastMessage, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        if (lastMessage.message == WM_QUIT)
            return false;
        TranslateMessage(&lastMessage);
        DispatchMessageA(&lastMessage);
    }
    return true;
}

void MainLoop::handleKeys() {
    const InputControl& input = *theModuleManager->getInputControl();
    Renderer* const renderer = theModuleManager->getRenderer();
    if (input.wasKeyPressed(VK_F2)) {
        showFps = !showFps;
        showMessage(showFps ? "FPS Counter activated" : "FPS Counter deactivated");
    }
    if (input.wasKeyPressed(VK_F3)) {
        filledPolygons = !filledPolygons;
        glPolygonMode(GL_FRONT_AND_BACK, filledPolygons ? GL_FILL : GL_LINE);
    }
    if (input.wasKeyPressed(VK_F4))
        showMessage(renderer->toggleLinearFiltering() ? "Texture filtering Linear" : "Texture filtering Nearest");
    if (input.wasKeyPressed(VK_F5))
        showMessage(renderer->toggleMipmaps() ? "MipMap activated" : "MipMap deactivated");
    if (input.wasKeyPressed(VK_F6)) {
        switch (renderer->cycleRenderMode()) {
        case RenderMode::immediate:
            showMessage("Immediate Rendering Mode activated");
            break;
        case RenderMode::vertexArray:
            showMessage("Vertex Array Rendering Mode activated");
            break;
        case RenderMode::vertexBuffer:
            showMessage("VBO Mode activated - f****** slow");
            break;
        }
    }
    if (input.wasKeyPressed(VK_F7))
        showMessage("Font is made with Display Lists");
    if (input.wasKeyPressed(VK_F8)) {
        frustumCulling = !frustumCulling;
        showMessage(frustumCulling ? "Frustum Culling activated" : "Frustum Culling deactivated");
    }
    if (input.wasKeyPressed(VK_F9))
        showMessage(renderer->toggleTransparency() ? "Transparency on" : "Transparency off");
    if (input.wasKeyPressed('T')) {
        texturing = !texturing;
        if (texturing)
            glEnable(GL_TEXTURE_2D);
        else
            glDisable(GL_TEXTURE_2D);
    }
}

void MainLoop::drawScene() {
    Camera* const camera = theModuleManager->getCamera();
    if (camera == nullptr)
        return;
    camera->apply();
    sceneRoot->render(camera);
    if (Hud* const hud = theModuleManager->getHud())
        hud->draw();
}

bool MainLoop::handleRoundEnd() {
    TeamManager* const teams = theModuleManager->getTeamManager();
    if (teams->getTeamCount() > 1)
        return true;
    char banner[128] = "You are all loosers!";
    if (Team* const winner = teams->nextTeam())
        std::snprintf(banner, sizeof banner, "Team %s win!", winner->getName().c_str());
    bannerFont->print(0.5f, 0.8f, banner, TextAlignment::centre);
    promptFont->print(0.5f, 0.1f, "Press ENTER for Next Round", TextAlignment::centre);
    if (!theModuleManager->getInputControl()->wasKeyPressed(VK_RETURN))
        return true;
    endRound();
    return loadRandomLevel();
}

void MainLoop::countFrame() {
    const std::uint32_t now = theModuleManager->getTimer()->getLastTick();
    if (ticksBetween(fpsTime, now) > fpsInterval) {
        std::snprintf(fpsText, sizeof fpsText, "%d", fpsFrameCount * fpsIntervalsPerSecond);
        fpsTime = now;
        fpsFrameCount = 0;
    } else {
        ++fpsFrameCount;
    }
}

void MainLoop::shutDown() {
    fpsFont.reset();
    bannerFont.reset();
    promptFont.reset();
    levelNames.clear();
    if (windowOpen)
        theModuleManager->getRenderer()->killWindow();
    windowOpen = false;
    endServices();
}
