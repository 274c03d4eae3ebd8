#include "platform/headless/gl_state.h"

#include "platform/headless/gl_internal.h"

#include <utility>

namespace headless {

using namespace detail;

namespace {

constexpr std::size_t problemLimit = 200;

/// Made at the first use: static initialisation of a test may already call GL.
struct Log {
    GlState bare;
    std::string extensions = defaultGlExtensions;
    std::vector<GlRecord> records;
    std::vector<GlPrimitive> primitives;
    std::vector<std::string> problems;
};

Log& log() {
    static Log instance;
    return instance;
}

std::map<std::string_view, std::uint64_t>& counters() {
    static std::map<std::string_view, std::uint64_t> instance;
    return instance;
}

} // namespace

namespace detail {

GlState& state() {
    return traffic.context != nullptr ? *traffic.context : log().bare;
}

void addProblem(std::string sentence) {
    if (log().problems.size() < problemLimit)
        log().problems.push_back(std::move(sentence));
}

void glProblem(const std::string& what) {
    addProblem(std::string(traffic.call) + " " + what);
}

std::uint64_t& counter(const char* name) {
    return counters()[name];
}

std::vector<double>& addRecord(const char* name) {
    log().records.push_back({name, {}});
    return log().records.back().arguments;
}

void makeCurrent(GlState* context) {
    traffic.context = context;
    traffic.insideBegin = false;
    traffic.compiled = nullptr;
}

void endGlFrame() {
    if (traffic.insideBegin)
        addProblem("SwapBuffers: glBegin has no glEnd");
    if (state().modelview.size() != 1 || state().projection.size() != 1)
        addProblem("SwapBuffers: a matrix is still pushed");
}

void resetGl() {
    traffic = {};
    const Log fresh;
    log() = fresh;
    for (auto& [name, count] : counters())
        count = 0;
}

void startPrimitive(GLenum mode) {
    if (!traffic.capturing)
        return;
    const GlState& now = state();
    const GlTextureUnit& unit = now.settings.units[0];
    log().primitives.push_back({mode,
                                unit.enabled ? unit.texture : 0,
                                {},
                                glEnabled(GL_LIGHTING),
                                now.modelview.back(),
                                now.projection.back(),
                                now.settings.viewport,
                                {},
                                {}});
}

void addVertex(float x, float y, float z) {
    if (!traffic.capturing || log().primitives.empty())
        return;
    GlPrimitive& current = log().primitives.back();
    if (current.vertices.empty())
        current.color = state().settings.color;
    current.vertices.push_back({x, y, z});
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

void setGlExtensions(std::string extensions) {
    log().extensions = std::move(extensions);
}

void recordGl(bool on) {
    if (on)
        clearGlRecords();
    traffic.recording = on;
}

const std::vector<GlRecord>& glRecords() {
    return log().records;
}

void clearGlRecords() {
    log().records.clear();
}

std::uint64_t glCalls(std::string_view name) {
    const auto found = counters().find(name);
    return found == counters().end() ? 0 : found->second;
}

void captureGeometry(bool on) {
    if (on)
        clearGlPrimitives();
    traffic.capturing = on;
}

const std::vector<GlPrimitive>& glPrimitives() {
    return log().primitives;
}

void clearGlPrimitives() {
    log().primitives.clear();
}

std::array<float, 3> windowPosition(const GlPrimitive& primitive, std::size_t vertex) {
    const auto& [x, y, z] = primitive.vertices.at(vertex);
    const Float4 clip = transformed(primitive.projection, transformed(primitive.modelview, {x, y, z, 1}));
    const auto& port = primitive.viewport;
    return {static_cast<float>(port[0]) + static_cast<float>(port[2]) * (clip[0] / clip[3] + 1) / 2,
            static_cast<float>(port[1]) + static_cast<float>(port[3]) * (clip[1] / clip[3] + 1) / 2,
            (clip[2] / clip[3] + 1) / 2};
}

const std::vector<std::string>& problems() {
    return log().problems;
}

} // namespace headless

const GLubyte* glGetString(GLenum name) {
    headless::detail::immediate("glGetString", std::tuple(name), [=] {
        if (name != GL_EXTENSIONS)
            headless::detail::glProblem("asks for a text that is not kept");
    });
    return reinterpret_cast<const GLubyte*>(headless::log().extensions.c_str());
}
