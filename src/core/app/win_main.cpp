#include "core/app/main_loop.h"

int WINAPI WinMain(HINSTANCE instance, HINSTANCE /*previousInstance*/, LPSTR /*commandLine*/, int /*showCommand*/) {
    MainLoop loop(instance);
    const bool good = loop.start() && loop.run();
    loop.shutDown();
    return good ? static_cast<int>(loop.getLastMessage().wParam) : failedStatus;
}
