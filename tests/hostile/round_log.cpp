#include "hostile/round_log.h"

#include "core/module_manager.h"
#include "core/scene_node.h"
#include "csg/csg_file.h"
#include "csg/csg_mesh.h"
#include "csg/csg_object.h"
#include "hostile/allocated_bytes.h"
#include "support/world_hash.h"

#include <cstdio>
#include <fstream>

namespace {

constexpr unsigned warmUpRounds = 10;
/// Texts and lists keep the room that their fullest moment took, some hundred bytes. Over a thousand rounds this is
/// four bytes a round: less than the smallest thing that could be lost in each.
constexpr std::size_t tolerance = 4 * 1024;

std::size_t facesOf(const std::string& solid) {
    csgMeshData data;
    std::string fault;
    csgMesh mesh;
    if (readCsgFile("csg/" + solid + ".csg", data, fault) == csgReadResult::ok)
        mesh.build(data);
    return mesh.countFaces();
}

} // namespace

RoundLog::RoundLog() {
    std::ifstream list("level/levels.lev");
    std::size_t count = 0;
    list >> count;
    std::map<std::string, std::size_t> known;
    std::string name;
    while (list >> name) {
        std::ifstream level("level/" + name + ".lev");
        int solids = 0;
        level >> solids;
        std::size_t faces = 0;
        std::string solid;
        for (int i = 0; i < solids && level >> solid; ++i) {
            if (!known.contains(solid))
                known[solid] = facesOf(solid);
            faces += known[solid];
            std::string ignored;
            for (int number = 0; number < 9; ++number)
                level >> ignored;
        }
        names[{solids, faces}] = name;
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
