#include "core/app/game_loader.h"
#include "core/app/level_files.h"
#include "core/base/data_limits.h"
#include "support/memory_files.h"
#include "support/require.h"

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    memory_files::put("level/levels.lev", data, size);
    std::vector<std::string> names;
    readLevelList(names);
    require(names.size() <= static_cast<std::size_t>(mostRepeatedNames) + size, "names are read or repeated in bounds");
    require(std::all_of(names.begin(), names.end(),
                        [](const std::string& name) { return !name.empty() && name.size() <= longestName; }),
            "every name is one");
    return 0;
}
