// Plays rounds by random input and stops at the first thing that is wrong:
//
//     hostile_play [--seed S] [--rounds N] [--report] [--twice]
//
// The last line is a hash over all rounds; the same seed gives the same hash, in every build type. --report adds a line
// for each round and the figures of each level; --twice plays the seed twice and compares the hashes.

#include "hostile/hostile_bot.h"
#include "support/test_data.h"

#include <cinttypes>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/common_interface_defs.h>
#endif

namespace {

const HostileBot* playing = nullptr;

/// What a crash would not tell by itself.
void tellWhere() {
    if (playing != nullptr)
        std::fprintf(stderr, "The game crashed: %s\n", playing->whereabouts().c_str());
}

void watchForCrashes() {
#if defined(__SANITIZE_ADDRESS__)
    __sanitizer_set_death_callback(tellWhere);
#else
    for (const int signal : {SIGSEGV, SIGABRT, SIGFPE})
        std::signal(signal, [](int number) {
            tellWhere();
            std::signal(number, SIG_DFL);
            std::raise(number);
        });
#endif
}

struct Options {
    std::uint64_t seed = 1;
    unsigned rounds = 10;
    bool report = false;
    bool twice = false;
};

bool read(int count, char** arguments, Options& options) {
    for (int i = 1; i < count; ++i) {
        const bool hasValue = i + 1 < count;
        if (std::strcmp(arguments[i], "--report") == 0)
            options.report = true;
        else if (std::strcmp(arguments[i], "--twice") == 0)
            options.twice = true;
        else if (std::strcmp(arguments[i], "--seed") == 0 && hasValue)
            options.seed = std::strtoull(arguments[++i], nullptr, 10);
        else if (std::strcmp(arguments[i], "--rounds") == 0 && hasValue)
            options.rounds = static_cast<unsigned>(std::strtoul(arguments[++i], nullptr, 10));
        else
            return false;
    }
    return true;
}

/// False, with the reason on stderr, when something was wrong.
bool play(const Options& options, std::uint64_t& hash) {
    HostileBot bot(options.seed, options.rounds, options.report);
    playing = &bot;
    bot.play();
    playing = nullptr;
    hash = bot.getHash();
    if (options.report)
        bot.print();
    if (!bot.getFault().empty())
        std::fprintf(stderr, "%s\n", bot.getFault().c_str());
    return bot.getFault().empty();
}

} // namespace

int main(int argumentCount, char** arguments) {
    Options options;
    if (!read(argumentCount, arguments, options)) {
        std::fprintf(stderr, "Usage: %s [--seed S] [--rounds N] [--report] [--twice]\n", arguments[0]);
        return 2;
    }
    watchForCrashes();
    const ShippedData data;
    std::uint64_t hash = 0;
    if (!play(options, hash))
        return 1;
    if (std::uint64_t again = 0; options.twice && (!play(options, again) || again != hash)) {
        std::fprintf(stderr, "The second time was different: %016" PRIx64 " after %016" PRIx64 "\n", again, hash);
        return 1;
    }
    std::printf("%016" PRIx64 " after %u rounds with seed %" PRIu64 "\n", hash, options.rounds, options.seed);
    return 0;
}
