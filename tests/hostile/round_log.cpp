#include "hostile/round_log.h"

#include "core/scene/scene_node.h"
#include "core/services/module_manager.h"
#include "hostile/allocated_bytes.h"
#include "support/world_hash.h"

#include <cstdio>

namespace {

constexpr unsigned warmUpRounds = 10;
/// Texts and lists keep the room that their fullest moment took, some hundred bytes. Over a thousand rounds this is
/// four bytes a round: less than the smallest thing that could be lost in each.
constexpr std::size_t tolerance = 4 * 1024;

} // namespace

const std::string& RoundLog::begin(unsigned round) {
    int solids = 0;
    for (SceneNode* const node : theModuleManager->getSceneRoot()->getChildren())
        solids += node->asCsgNode() != nullptr ? 1 : 0;
    const std::string name = std::to_string(solids) + " solids, " + std::to_string(world::landFaces()) + " faces";
    current = &*levels.try_emplace(name).first;
    Level& level = current->second;
    level.last = {round, allocatedBytes()};
    ++level.rounds;
    if (round > warmUpRounds && level.settled.round == 0)
        level.settled = level.last;
    return current->first;
}

void RoundLog::end(unsigned frameCount, unsigned turnCount) {
    current->second.frames += frameCount;
    current->second.turns += turnCount;
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
        std::printf("%-24s %4u rounds, %7lu frames, %6lu turns; bytes held at the start of round", name.c_str(),
                    level.rounds, level.frames, level.turns);
        for (const Sample& sample : {level.settled, level.last})
            std::printf(" %u: %zu", sample.round, sample.bytes);
        std::printf("\n");
    }
}
