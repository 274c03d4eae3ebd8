#pragma once

#include "platform/win32.h"

/// Entry point of an extension function as a pointer of its own type, or null when the driver does not have it. The
/// call convention of wglGetProcAddress hands out every function as one type; going through void (*)() is the cast that
/// compilers accept as meant.
template <class Function>
Function getExtension(const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(wglGetProcAddress(name)));
}
