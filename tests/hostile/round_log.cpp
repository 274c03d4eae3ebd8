#include "hostile/round_log.h"

#include "core/app/game_loader.h"
#include "core/app/level_files.h"
#include "core/base/file_access.h"
#include "core/scene/scene_node.h"
#include "core/services/module_manager.h"
#include "csg/land/csg_object.h"
#include "csg/solid/csg_file.h"
#include "csg/solid/csg_mesh.h"
#include "hostile/allocated_bytes.h"
#include "support/world_hash.h"

#include <cstdio>
#include <vector>

namespace {

constexpr unsigned warmUpRounds = 10;
/// Texts and lists keep the room that their fullest moment took, some hundred bytes. Over a thousand rounds this is
/// four bytes a round: less than the smallest thing that could be lost in each.
constexpr std::size_t tolerance = 4 * 1024;

} // namespace

RoundLog::RoundLog() {
    std::vector<std::string> listed;
    readLevelList(listed);
    for (const std::string& name : listed) {
        std::string text;
        if (!readWholeFile("level/" + name + ".lev", text))
            continue;
        const std::vector<SolidEntry> solids = readLevelText(std::move(text)).solids;
        csgMesh mesh;
        std::size_t faces = 0;
        for (const SolidEntry& solid : solids) {
            csgMeshData data;
            TextFault fault;
            if (readCsgFile("csg/" + solid.name + ".csg", data, fault) == csgReadResult::ok)
                mesh.build(data);
            faces += mesh.countFaces();
        }
        names[{static_cast<int>(solids.size()), faces}] = name;
    }
}

const std::string& RoundLog::begin(unsigned round) {
    static const std::string unknown = "unknown";
    int solids = 0;
    for (SceneNode* const node : theModuleManager->getSceneRoot()->getChildren())
        solids += node->asCsgNode() != nullptr ? 1 : 0;
    const auto found = names.find({solids, world::landFaces()});
    const std::string& name = found != names.end() ? found->second : unknown;
    current = &levels[name];
    current->last = {round, allocatedBytes()};
    ++current->rounds;
    if (round > warmUpRounds && current->settled.round == 0)
        current->settled = current->last;
    return name;
}

void RoundLog::end(unsigned frameCount, unsigned turnCount) {
    current->frames += frameCount;
    current->turns += turnCount;
}

std::string RoundLog::growth() const {
    for (const auto& [name, level] : levels) {
        if (level.settled.round == 0 || level.last.bytes <= level.settled.bytes + tolerance)
            continue;
        char line[256];
        std::snprintf(line, sizeof line, "memory grows: %s held %zu bytes in round %u, %zu in round %u", name.c_str(),
                      level.settled.bytes, level.settled.round, level.last.bytes, level.last.round);
        return line;
    }
    return {};
}

void RoundLog::print() const {
    for (const auto& [name, level] : levels) {
        std::printf("%-9s %4u rounds, %7lu frames, %6lu turns; bytes held at the start of round", name.c_str(),
                    level.rounds, level.frames, level.turns);
        for (const Sample& sample : {level.settled, level.last})
            std::printf(" %u: %zu", sample.round, sample.bytes);
        std::printf("\n");
    }
}
