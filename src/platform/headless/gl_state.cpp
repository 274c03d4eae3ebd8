#include "platform/headless/gl_state.h"

#include "platform/headless/gl_internal.h"

#include <string>

namespace headless {

using namespace detail;

namespace {

constexpr std::size_t problemLimit = 200;

GlState& bareState() {
    static GlState bare = freshState();
    return bare;
}

// Makes the state usable before the first reset: static initialisation of a test may already call GL.
const bool initialised = [] {
    traffic.state = &bareState();
    return true;
}();

Entry* entries = nullptr;
std::vector<GlRecord> records;
std::vector<GlPrimitive> primitives;
std::vector<std::string> problemList;

} // namespace

namespace detail {

void Entry::join() {
    // A counter that was reset is still in the list.
    for (const Entry* known = entries; known != nullptr; known = known->next)
        if (known == this)
            return;
    next = entries;
    entries = this;
}

void addProblem(std::string sentence) {
    if (problemList.size() < problemLimit)
        problemList.push_back(std::move(sentence));
}

void glProblem(const Entry& entry, const char* what, GLenum error) {
    addProblem(std::string(entry.name) + " " + what);
    if (state().error == GL_NO_ERROR)
        state().error = error;
}

void appendRecord(const char* name, std::vector<double> arguments) {
    records.push_back({name, std::move(arguments)});
}

GlState freshState() {
    GlState fresh;
    fresh.textures[0] = {};
    fresh.settings.lights[0].diffuse = {1, 1, 1, 1};
    fresh.settings.lights[0].specular = {1, 1, 1, 1};
    fresh.settings.enables[GL_DITHER] = true;
    return fresh;
}

void makeCurrent(GlState* context) {
    traffic.state = context != nullptr ? context : &bareState();
    traffic.insideBegin = false;
    traffic.compiled = nullptr;
}

void endGlFrame() {
    const GlState& ended = state();
    if (traffic.insideBegin)
        addProblem("SwapBuffers: glBegin has no glEnd");
    if (ended.modelview.size() != 1 || ended.projection.size() != 1 || ended.textureMatrix.size() != 1)
        addProblem("SwapBuffers: a matrix is still pushed");
    if (!ended.pushedSettings.empty())
        addProblem("SwapBuffers: attributes are still pushed");
    traffic.lastFrame = traffic.frame;
    traffic.frame = {};
}

void resetGl() {
    bareState() = freshState();
    traffic = {};
    traffic.state = &bareState();
    for (Entry* entry = entries; entry != nullptr; entry = entry->next)
        entry->count = 0;
    records.clear();
    primitives.clear();
    problemList.clear();
    setGlExtensions(defaultGlExtensions);
}

void startPrimitive(GLenum mode) {
    ++traffic.frame.primitives;
    if (!traffic.capturing)
        return;
    const GlState& now = state();
    GlPrimitive started;
    started.mode = mode;
    started.texture = now.settings.units[0].enabled ? now.settings.units[0].texture : 0;
    started.color = now.settings.color;
    started.lighting = glEnabled(GL_LIGHTING);
    started.modelview = now.modelview.back();
    started.projection = now.projection.back();
    started.viewport = now.settings.viewport;
    primitives.push_back(std::move(started));
}

void addVertex(const std::array<float, 3>& position) {
    ++traffic.frame.vertices;
    if (!traffic.capturing || primitives.empty())
        return;
    GlPrimitive& current = primitives.back();
    if (current.vertices.empty())
        current.color = state().settings.color;
    current.vertices.push_back(position);
    current.coordinates.push_back(state().settings.units[0].coordinate);
}

} // namespace detail

const GlState& glState() {
    return state();
}

bool glEnabled(GLenum capability) {
    const GlSettings& settings = state().settings;
    if (capability == GL_TEXTURE_2D)
        return settings.units[settings.activeUnit].enabled;
    const auto found = settings.enables.find(capability);
    return found != settings.enables.end() && found->second;
}

void recordGl(bool on) {
    if (on)
        records.clear();
    traffic.recording = on;
}

const std::vector<GlRecord>& glRecords() {
    return records;
}

void clearGlRecords() {
    records.clear();
}

std::uint64_t glCalls(std::string_view name) {
    for (const Entry* entry = entries; entry != nullptr; entry = entry->next)
        if (name == entry->name)
            return entry->count;
    return 0;
}

void captureGeometry(bool on) {
    if (on)
        primitives.clear();
    traffic.capturing = on;
}

const std::vector<GlPrimitive>& glPrimitives() {
    return primitives;
}

void clearGlPrimitives() {
    primitives.clear();
}

std::array<float, 3> windowPosition(const GlPrimitive& primitive, std::size_t vertex) {
    const std::array<float, 3>& given = primitive.vertices.at(vertex);
    const Float4 eye = transformed(primitive.modelview, {given[0], given[1], given[2], 1});
    const Float4 clip = transformed(primitive.projection, eye);
    const auto& port = primitive.viewport;
    return {static_cast<float>(port[0]) + static_cast<float>(port[2]) * (clip[0] / clip[3] + 1) / 2,
            static_cast<float>(port[1]) + static_cast<float>(port[3]) * (clip[1] / clip[3] + 1) / 2,
            (clip[2] / clip[3] + 1) / 2};
}

GlFrame lastGlFrame() {
    return traffic.lastFrame;
}

const std::vector<std::string>& problems() {
    return problemList;
}

} // namespace headless
