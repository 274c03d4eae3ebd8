#pragma once

// OpenGL 1.1, GLU and the few ARB names the game uses. The entry points of extensions are fetched at run time through
// wglGetProcAddress; only their types and constants come from here.

#ifdef _WIN32
#include "platform/win32.h"
#endif

#include <GL/gl.h>

#include <GL/glext.h>
#include <GL/glu.h>
