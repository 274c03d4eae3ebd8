#include "core/app/level_files.h"
#include "support/bench.h"
#include "support/playground.h"

#include <algorithm>
#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto [names, colour, faults] = readTeamText(std::string(data, data + size), {1.0f, 1.0f, 1.0f});
    require(faults.size() <= 3, "a reader that has failed says no more");
    require(names.size() <= static_cast<std::size_t>(mostRepeatedNames) + size, "names are read or repeated in bounds");
    require(std::all_of(colour.begin(), colour.end(), [](float channel) { return std::isfinite(channel); }),
            "a colour is finite");
    const Bench bench;
    putFlatLevel();
    memory_files::put("teams/A.tm", data, size);
    playFlatLevel(bench);
    return 0;
}
