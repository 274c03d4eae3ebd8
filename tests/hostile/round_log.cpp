#include "hostile/round_log.h"

#include "core/module_manager.h"
#include "core/scene_node.h"
#include "csg/csg_file.h"
#include "csg/csg_mesh.h"
#include "csg/csg_object.h"
#include "hostile/allocated_bytes.h"
#include "support/world_hash.h"

#include <algorithm>
#include <cstdio>
#include <fstream>

namespace {

constexpr unsigned warmUpRounds = 10;
/// Texts and queues may be a little longer at one time than at another, by some hundred bytes. A single node lost in
/// all those rounds is about as much.
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
    const std::size_t bytes = allocatedBytes();
    current->samples.push_back({round, bytes});
    return name;
}

void RoundLog::end(unsigned frameCount, unsigned turnCount) {
    current->frames += frameCount;
    current->turns += turnCount;
}

const RoundLog::Sample* RoundLog::baseline(const Level& level) {
    const auto found = std::find_if(level.samples.begin(), level.samples.end(),
                                    [](const Sample& sample) { return sample.round > warmUpRounds; });
    return found == level.samples.end() ? nullptr : &*found;
}

std::string RoundLog::growth() const {
    for (const auto& [name, level] : levels) {
        const Sample* const base = baseline(level);
        if (base == nullptr)
            continue;
        const Sample& last = level.samples.back();
        if (last.bytes > base->bytes + tolerance) {
            char line[256];
            std::snprintf(line, sizeof line, "memory grows: %s held %zu bytes in round %u, %zu in round %u",
                          name.c_str(), base->bytes, base->round, last.bytes, last.round);
            return line;
        }
    }
    return {};
}

void RoundLog::print() const {
    for (const auto& [name, level] : levels) {
        const auto byBytes = [](const Sample& a, const Sample& b) { return a.bytes < b.bytes; };
        const auto [least, most] = std::minmax_element(level.samples.begin(), level.samples.end(), byBytes);
        std::printf("%-9s %4zu rounds %7lu frames %6lu turns, bytes at the start: first %zu, last %zu, %zu to %zu",
                    name.c_str(), level.samples.size(), level.frames, level.turns, level.samples.front().bytes,
                    level.samples.back().bytes, least->bytes, most->bytes);
        if (const Sample* const base = baseline(level))
            std::printf("; round %u %zu", base->round, base->bytes);
        std::printf("\n");
    }
}
