// Plays rounds by random input and stops at the first thing that is wrong:
//
//     hostile_play [--seed S] [--rounds N] [--report] [--twice]
//
// The last line is a hash over all rounds; the same seed gives the same hash, in every build type. --report adds a line
// for each round and the figures of each level; --twice plays the seed twice and compares the hashes.

#include "hostile/hostile_bot.h"
#include "support/test_data.h"

#include <CLI/CLI.hpp>

#include <cinttypes>
#include <csignal>
#include <cstdio>

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
    CLI::App app("Plays rounds by random input and stops at the first thing that is wrong.", "hostile_play");
    app.add_option("--seed", options.seed);
    app.add_option("--rounds", options.rounds);
    app.add_flag("--report", options.report, "a line for each round, and the figures of each level");
    app.add_flag("--twice", options.twice, "play the seed twice and compare the hashes");
    CLI11_PARSE(app, argumentCount, arguments);
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
