#pragma once

// What the sources of the headless GL share. Every GL function is one call of attribute, listed or immediate: its name,
// its arguments for the record, and its work.

#include "platform/headless/gl_state.h"

#include <tuple>
#include <type_traits>

namespace headless::detail {

/// The part of the state that every call looks at.
struct Traffic {
    GlState* context = nullptr; ///< the current one; null means the bare one
    const char* call = "";      ///< being executed
    bool recording = false;
    bool capturing = false;
    bool insideBegin = false;
    GlList* compiled = nullptr; ///< list between glNewList and glEndList
};
inline Traffic traffic;

GlState& state();
void addProblem(std::string sentence);
/// Writes down what is wrong with the call being executed.
void glProblem(const std::string& what);
/// Counter of the function, for ever.
std::uint64_t& counter(const char* name);
std::vector<double>& addRecord(const char* name);

template <class T>
void append(std::vector<double>& numbers, const T& value) {
    if constexpr (std::is_pointer_v<T>)
        numbers.push_back(static_cast<double>(reinterpret_cast<std::uintptr_t>(value)));
    else if constexpr (std::is_arithmetic_v<T>)
        numbers.push_back(static_cast<double>(value));
    else
        numbers.insert(numbers.end(), value.begin(), value.end());
}

/// Counts a call and records it when asked to. The work is a lambda, so every function has an instance of its own.
template <class Work, class... Arguments>
void note(const char* name, const std::tuple<Arguments...>& arguments) {
    static_assert(std::is_class_v<Work>, "two functions of one type would share their counter");
    static std::uint64_t& count = counter(name);
    ++count;
    if (!traffic.recording)
        return;
    [[maybe_unused]] std::vector<double>& numbers = addRecord(name);
    std::apply([&](const Arguments&... values) { (append(numbers, values), ...); }, arguments);
}

template <bool anywhere, class Work>
void execute(const char* name, const Work& work) {
    traffic.call = name;
    if (!anywhere && traffic.insideBegin)
        glProblem("is not allowed between glBegin and glEnd");
    else
        work();
}

template <bool anywhere, class Work>
void executeOrCompile(const char* name, const Work& work) {
    if (traffic.compiled != nullptr)
        traffic.compiled->emplace_back([=] { execute<anywhere>(name, work); });
    else
        execute<anywhere>(name, work);
}

/// A call that may stand between glBegin and glEnd, and that a display list takes.
template <class Arguments, class Work>
void attribute(const char* name, const Arguments& arguments, const Work& work) {
    note<Work>(name, arguments);
    executeOrCompile<true>(name, work);
}

/// A call that a display list takes.
template <class Arguments, class Work>
void listed(const char* name, const Arguments& arguments, const Work& work) {
    note<Work>(name, arguments);
    executeOrCompile<false>(name, work);
}

/// A call that takes effect at once even while a list is compiled.
template <class Arguments, class Work>
void immediate(const char* name, const Arguments& arguments, const Work& work) {
    note<Work>(name, arguments);
    execute<false>(name, work);
}

/// Makes the state current; null means the bare one.
void makeCurrent(GlState* context);
/// Checks of SwapBuffers.
void endGlFrame();
void resetGl();

void startPrimitive(GLenum mode);
void addVertex(float x, float y, float z);
Float4 transformed(const GlMatrix& matrix, const Float4& point);

// Functions of extensions, as wglGetProcAddress hands them out.
void activeTexture(GLenum unit);
void multiTexCoord2f(GLenum unit, GLfloat s, GLfloat t);
void genBuffers(GLsizei n, GLuint* buffers);
void deleteBuffers(GLsizei n, const GLuint* buffers);
void bindBuffer(GLenum target, GLuint buffer);
void bufferData(GLenum target, GLsizeiptrARB size, const void* data, GLenum usage);

} // namespace headless::detail
