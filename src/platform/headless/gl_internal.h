#pragma once

// What the sources of the headless GL share.

#include "platform/headless/gl_state.h"

#include <type_traits>
#include <utility>

namespace headless::detail {

/// Counter of one GL function; it joins the list of all counters at its first call.
struct Entry {
    const char* name;
    std::uint64_t count = 0;
    Entry* next = nullptr;

    constexpr explicit Entry(const char* functionName) : name(functionName) {}
    void join();
};

/// The part of the state that every call looks at.
struct Traffic {
    GlState* state = nullptr; ///< of the current context
    bool recording = false;
    bool capturing = false;
    bool insideBegin = false;
    int replayDepth = 0;        ///< nesting of display lists being executed
    GlList* compiled = nullptr; ///< list between glNewList and glEndList
    bool compileOnly = false;
    GLenum beginMode = 0;
    GlFrame frame;
    GlFrame lastFrame;
};
inline Traffic traffic;

inline GlState& state() {
    return *traffic.state;
}

void addProblem(std::string sentence);
/// Writes the problem down and raises the error flag unless one is raised already.
void glProblem(const Entry& entry, const char* what, GLenum error);
void appendRecord(const char* name, std::vector<double> arguments);

template <class T>
double asNumber(T value) {
    if constexpr (std::is_pointer_v<T>)
        return static_cast<double>(reinterpret_cast<std::uintptr_t>(value));
    else
        return static_cast<double>(value);
}

/// Counts a call of the program; a call that a display list makes is not one.
inline void count(Entry& entry) {
    if (traffic.replayDepth == 0 && entry.count++ == 0)
        entry.join();
}

/// Counts a call and records it when asked to.
template <class... Arguments>
void note(Entry& entry, Arguments... arguments) {
    count(entry);
    if (traffic.recording && traffic.replayDepth == 0)
        appendRecord(entry.name, {asNumber(arguments)...});
}

/// Puts the call into the list under construction; true when it is not to be executed now.
template <class Replay>
bool compiled(Replay&& replay) {
    if (traffic.compiled == nullptr || traffic.replayDepth > 0)
        return false;
    traffic.compiled->emplace_back(std::forward<Replay>(replay));
    return traffic.compileOnly;
}

/// False, with a problem written down, between glBegin and glEnd.
inline bool outsideBegin(const Entry& entry) {
    if (!traffic.insideBegin)
        return true;
    glProblem(entry, "is not allowed between glBegin and glEnd", GL_INVALID_OPERATION);
    return false;
}

/// Counts, records and checks a call that takes effect at once even while a list is compiled.
template <class... Arguments>
bool immediate(Entry& entry, Arguments... arguments) {
    note(entry, arguments...);
    return outsideBegin(entry);
}

/// Fresh context; the caller owns it.
GlState freshState();
/// Makes the state current; null means the bare one.
void makeCurrent(GlState* context);
/// Frame bookkeeping and checks of SwapBuffers.
void endGlFrame();
void resetGl();

void startPrimitive(GLenum mode);
void addVertex(const std::array<float, 3>& position);

GlMatrix multiplied(const GlMatrix& left, const GlMatrix& right);
Float4 transformed(const GlMatrix& matrix, const Float4& point);

using FunctionPointer = void (*)();
/// Buffer-object and multitexture entry points by name, or null.
FunctionPointer bufferFunction(std::string_view name);
FunctionPointer multitextureFunction(std::string_view name);

} // namespace headless::detail
