#include "core/app/level_files.h"
#include "support/bench.h"
#include "support/playground.h"

#include <algorithm>

namespace {

/// More worms or teams are read but not put into the world, for speed.
constexpr int mostPlayed = 3;

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto [usable, teams, faults] = readTeamListText(std::string(data, data + size));
    require(usable || !faults.empty(), "a refusal has a reason");
    require(teams.size() <= static_cast<std::size_t>(mostTeams), "the number of teams is in bounds");
    int worms = 0;
    for (const TeamEntry& team : teams)
        worms += std::max(team.wormCount, 0);
    if (worms > mostPlayed)
        return 0;
    const Bench bench;
    putFlatLevel();
    memory_files::put("teams/teams.tm", data, size);
    playFlatLevel(bench);
    return 0;
}
