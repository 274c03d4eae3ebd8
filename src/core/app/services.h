#pragma once

// The services of the game start and end here: each registers itself when it is made, the registry destroys them.
//
// The order of the end is not that of the start turned round: what plays and draws ends while the clock, the keys and
// the collision service that it keeps pointers to are still there.

#include "platform/win32.h"

/// Makes the registry and every service that needs no window; the window procedure belongs to the renderer's window.
void startServices(WNDPROC windowProcedure, HINSTANCE instance);
/// Makes what needs the renderer's window: textures come from "./textures/", and there is a HUD.
void startWindowServices();
/// Destroys the registry with all that is registered.
void endServices();
