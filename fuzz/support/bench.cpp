#include "support/bench.h"

#include "core/base/log.h"
#include "platform/crt_random.h"
#include "platform/headless/headless.h"

#include <cmath>
#include <memory>

namespace {

constexpr unsigned inputsPerDesktop = 500;

std::unique_ptr<TestServices> current;
unsigned inputs = 0;
unsigned lines = 0;

void countLine(const char*) {
    ++lines;
}

/// Ends the services before the desktop beneath them and before the sanitizer looks for leaks.
struct AtExit {
    ~AtExit() { current.reset(); }
};

} // namespace

Bench::Bench() {
    if (inputs++ % inputsPerDesktop == 0) {
        current.reset();
        current = std::make_unique<TestServices>();
        static const AtExit last; // constructed after the desktop's own statics, so it goes first
    }
    setLogSink(countLine);
    lines = 0;
    crtSrand(1);
    problemsBefore = headless::problems().size();
}

Bench::~Bench() {
    if (headless::problems().size() > problemsBefore)
        require(false, headless::problems().back().c_str());
}

TestServices& Bench::services() const {
    return *current;
}

unsigned Bench::logLines() {
    return lines;
}

void Bench::drawn(const std::function<void()>& draw) {
    headless::captureGeometry(true);
    draw();
    for (const headless::GlPrimitive& primitive : headless::glPrimitives())
        for (const std::array<float, 3>& vertex : primitive.vertices)
            for (const float coordinate : vertex)
                require(std::isfinite(coordinate), "what is drawn is finite");
    headless::captureGeometry(false);
    headless::clearGlPrimitives();
}
