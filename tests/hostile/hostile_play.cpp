// Plays rounds by random input and stops at the first thing that is wrong:
//
//     hostile_play [--seed S] [--rounds N] [--twice]
//
// A line for each round, the figures of each level, and a hash over all rounds; the same seed gives the same hash, in
// every build type. --twice plays the seed twice and compares the hashes.

#include "hostile/hostile_bot.h"
#include "support/test_data.h"

#include <CLI/CLI.hpp>

#include <cinttypes>
#include <cstdio>

namespace {

struct Options {
    std::uint64_t seed = 1;
    unsigned rounds = 10;
    bool twice = false;
};

/// False, with the reason on stderr, when something was wrong.
bool play(const Options& options, std::uint64_t& hash) {
    HostileBot bot(options.seed, options.rounds);
    bot.play();
    hash = bot.getHash();
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
    app.add_flag("--twice", options.twice, "play the seed twice and compare the hashes");
    CLI11_PARSE(app, argumentCount, arguments);
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
