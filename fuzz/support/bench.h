#pragma once

// What a loader is fuzzed on: the game's services on the headless desktop, kept from one input to the next for speed
// and made anew now and then, so that what the desktop records does not add up.

#include "support/memory_files.h"
#include "support/require.h"
#include "support/test_services.h"

#include <functional>

class Bench {
public:
    /// Services as new ones for the next input; the random stream and the log count start over.
    Bench();
    /// Requires that the desktop was used as it has to be.
    ~Bench();
    Bench(const Bench&) = delete;
    Bench& operator=(const Bench&) = delete;

    TestServices& services() const;
    /// Lines that were written to the log for this input.
    static unsigned logLines();

    /// Draws and requires every vertex that reaches GL to be a finite number.
    static void drawn(const std::function<void()>& draw);

private:
    std::size_t problemsBefore;
};
