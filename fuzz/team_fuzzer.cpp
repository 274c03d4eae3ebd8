#include "core/data_limits.h"
#include "core/level_files.h"
#include "support/bench.h"
#include "support/playground.h"

#include <algorithm>
#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::vector<std::string> names;
    float colour[3] = {1.0f, 1.0f, 1.0f};
    std::vector<TextFault> faults;
    readTeamText(std::string(data, data + size), names, colour[0], colour[1], colour[2], faults);
    require(faults.size() <= 3, "a reader that has failed says no more");
    require(names.size() <= static_cast<std::size_t>(mostRepeatedNames) + size, "names are read or repeated in bounds");
    require(std::all_of(colour, colour + 3, [](float channel) { return std::isfinite(channel); }),
            "a colour is finite");
    const Bench bench;
    putFlatLevel();
    memory_files::put("teams/A.tm", data, size);
    playFlatLevel(bench);
    return 0;
}
