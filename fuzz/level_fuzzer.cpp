#include "core/app/level_files.h"
#include "support/bench.h"
#include "support/playground.h"

#include <algorithm>

namespace {

/// A level with more solids is read but not built, for speed.
constexpr std::size_t mostBuilt = 4;

/// Whether worms that are dropped on the solid land on it rather than miss it ten thousand times.
bool isGround(const SolidEntry& solid) {
    const auto isIn = [](double value, double low, double high) { return value >= low && value <= high; };
    return solid.name == "slab" && isIn(solid.rotation[0], -0.2, 0.2) && isIn(solid.rotation[2], -0.2, 0.2) &&
           isIn(solid.scale[0], 0.5, 100.0) && isIn(solid.scale[1], 0.1, 5.0) && isIn(solid.scale[2], 0.5, 100.0) &&
           isIn(solid.translation[0], -50.0, 50.0) && isIn(solid.translation[1], 0.0, 1000.0) &&
           isIn(solid.translation[2], -50.0, 50.0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto [usable, solids, faults] = readLevelText(std::string(data, data + size));
    require(usable || !faults.empty(), "a refusal has a reason");
    require(solids.size() <= static_cast<std::size_t>(mostSolids), "the number of solids is in bounds");
    if (solids.size() > mostBuilt)
        return 0;
    const Bench bench;
    putFlatLevel();
    memory_files::put("./level/flat.lev", data, size);
    if (solids.empty() || !std::all_of(solids.begin(), solids.end(), isGround))
        memory_files::put("teams/teams.tm", "1 A 0");
    playFlatLevel(bench);
    return 0;
}
