#include "hostile/round_log.h"

#include "core/file_access.h"
#include "core/game_loader.h"
#include "core/level_files.h"
#include "core/module_manager.h"
#include "core/scene_node.h"
#include "csg/csg_file.h"
#include "csg/csg_mesh.h"
#include "csg/csg_object.h"
#include "hostile/allocated_bytes.h"
#include "support/world_hash.h"

#include <cstdio>
#include <vector>

namespace {

constexpr unsigned warmUpRounds = 10;
/// Texts and lists keep the room that their fullest moment took, some hundred bytes. Over a thousand rounds this is
/// four bytes a round: less than the smallest thing that could be lost in each.
constexpr std::size_t tolerance = 4 * 1024;

std::size_t facesOf(const std::string& solid) {
    csgMeshData data;
    TextFault fault;
    csgMesh mesh;
    if (readCsgFile("csg/" + solid + ".csg", data, fault) == csgReadResult::ok)
        mesh.build(data);
    return mesh.countFaces();
}

} // namespace

RoundLog::RoundLog() {
    std::vector<std::string> listed;
    readLevelList(listed);
    std::map<std::string, std::size_t> known;
    for (const std::string& name : listed) {
        std::string text;
        std::vector<SolidEntry> solids;
        std::vector<TextFault> faults;
        readWholeFile("level/" + name + ".lev", text);
        readLevelText(std::move(text), solids, faults);
        std::size_t faces = 0;
        for (const SolidEntry& solid : solids) {
            if (!known.contains(solid.name))
                known[solid.name] = facesOf(solid.name);
            faces += known[solid.name];
        }
        names[{static_cast<int>(solids.size()), faces}] = name;
    }
}

const std::string& RoundLog::begin(unsigned round) {
    int solids = 0;
    for (SceneNode* const node : theModuleManager->getSceneRoot()->getChildren())
        solids += node->asCsgNode() != nullptr ? 1 : 0;
    static const std::string unknown = "unknown";
    const auto found = names.find({solids, world::landFaces()});
    const std::string& name = found != names.end() ? found->second : unknown;
    current = &levels[name];
    const Sample sample{round, allocatedBytes()};
    if (current->rounds++ == 0)
        current->first = sample;
    if (round > warmUpRounds && current->settled.round == 0)
        current->settled = sample;
    if (sample.bytes > current->most.bytes)
        current->most = sample;
    current->last = sample;
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
        for (const Sample& sample : {level.first, level.settled, level.most, level.last})
            std::printf(" %u: %zu", sample.round, sample.bytes);
        std::printf("\n");
    }
}
