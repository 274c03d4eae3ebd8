// Display lists: the calls of a list are kept and run again.

#include "platform/headless/gl_internal.h"

#include <cstring>

using namespace headless;
using namespace headless::detail;

namespace {

/// Nesting at which a list that calls itself is cut off.
constexpr int deepestReplay = 64;

void replay(GLuint list) {
    const auto found = state().lists.find(list);
    if (found == state().lists.end() || traffic.replayDepth == deepestReplay)
        return;
    ++traffic.replayDepth;
    for (const auto& call : found->second)
        call();
    --traffic.replayDepth;
}

template <class Number>
std::vector<GLint> numbers(const void* lists, std::size_t count) {
    std::vector<Number> given(count);
    if (count > 0)
        std::memcpy(given.data(), lists, count * sizeof(Number));
    std::vector<GLint> result;
    for (const Number number : given)
        result.push_back(static_cast<GLint>(number));
    return result;
}

std::vector<GLint> listNumbers(GLsizei n, GLenum type, const void* lists) {
    const auto count = static_cast<std::size_t>(n < 0 ? 0 : n);
    switch (type) {
    case GL_BYTE:
        return numbers<GLbyte>(lists, count);
    case GL_UNSIGNED_BYTE:
        return numbers<GLubyte>(lists, count);
    case GL_SHORT:
        return numbers<GLshort>(lists, count);
    case GL_UNSIGNED_SHORT:
        return numbers<GLushort>(lists, count);
    case GL_INT:
        return numbers<GLint>(lists, count);
    case GL_UNSIGNED_INT:
        return numbers<GLuint>(lists, count);
    default:
        return {};
    }
}

void replayAll(const std::vector<GLint>& codes) {
    for (const GLint code : codes)
        replay(state().settings.listBase + static_cast<GLuint>(code));
}

} // namespace

GLuint glGenLists(GLsizei range) {
    static constinit Entry entry{"glGenLists"};
    if (!immediate(entry, range) || range <= 0)
        return 0;
    auto& lists = state().lists;
    const GLuint first = lists.empty() ? 1 : lists.rbegin()->first + 1;
    for (GLsizei i = 0; i < range; ++i)
        lists[first + static_cast<GLuint>(i)] = {};
    return first;
}

void glDeleteLists(GLuint list, GLsizei range) {
    static constinit Entry entry{"glDeleteLists"};
    if (!immediate(entry, list, range))
        return;
    for (GLsizei i = 0; i < range; ++i)
        state().lists.erase(list + static_cast<GLuint>(i));
}

GLboolean glIsList(GLuint list) {
    static constinit Entry entry{"glIsList"};
    return immediate(entry, list) && state().lists.contains(list);
}

void glNewList(GLuint list, GLenum mode) {
    static constinit Entry entry{"glNewList"};
    if (!immediate(entry, list, mode))
        return;
    if (traffic.compiled != nullptr || list == 0) {
        glProblem(entry, "cannot start a list here", GL_INVALID_OPERATION);
        return;
    }
    traffic.compiled = &state().lists[list];
    traffic.compiled->clear();
    traffic.compileOnly = mode == GL_COMPILE;
}

void glEndList() {
    static constinit Entry entry{"glEndList"};
    if (!immediate(entry))
        return;
    if (traffic.compiled == nullptr)
        glProblem(entry, "has no glNewList", GL_INVALID_OPERATION);
    traffic.compiled = nullptr;
}

void glListBase(GLuint base) {
    static constinit Entry entry{"glListBase"};
    note(entry, base);
    if (!compiled([=] { glListBase(base); }) && outsideBegin(entry))
        state().settings.listBase = base;
}

void glCallList(GLuint list) {
    static constinit Entry entry{"glCallList"};
    note(entry, list);
    if (!compiled([=] { glCallList(list); }))
        replay(list);
}

void glCallLists(GLsizei n, GLenum type, const GLvoid* lists) {
    static constinit Entry entry{"glCallLists"};
    const std::vector<GLint> codes = listNumbers(n, type, lists);
    if (traffic.recording && traffic.replayDepth == 0) {
        std::vector<double> arguments = {asNumber(n), asNumber(type)};
        arguments.insert(arguments.end(), codes.begin(), codes.end());
        appendRecord(entry.name, std::move(arguments));
    }
    count(entry);
    if (!compiled([=] { replayAll(codes); }))
        replayAll(codes);
}
