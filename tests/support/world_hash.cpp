#include "support/world_hash.h"

#include "core/module_manager.h"
#include "core/scene_node.h"
#include "core/team.h"
#include "core/team_manager.h"
#include "csg/csg_object.h"
#include "game/weapon.h"
#include "game/worm.h"
#include "support/solids.h"

#include <bit>

namespace {

class Hash {
public:
    void add(std::uint64_t value) {
        for (int shift = 0; shift < 64; shift += 8) {
            state ^= (value >> shift) & 0xFFu;
            state *= 1099511628211u;
        }
    }
    void add(float value) { add(std::uint64_t{std::bit_cast<std::uint32_t>(value)}); }
    void add(const Vector3& v) {
        add(v.x);
        add(v.y);
        add(v.z);
    }
    void add(const std::string& text) {
        for (const char c : text)
            add(std::uint64_t{static_cast<unsigned char>(c)});
    }
    std::uint64_t get() const { return state; }

private:
    std::uint64_t state = 14695981039346656037u;
};

template <class Visit>
void forEachWorm(Visit visit) {
    TeamManager* const teams = theModuleManager->getTeamManager();
    if (teams == nullptr)
        return;
    for (const Team* const team : teams->getTeams())
        for (Worm* const worm : team->getWorms())
            visit(worm);
}

void addTeam(Hash& hash, const Team& team) {
    hash.add(team.getName());
    for (const auto& entry : team.getWeapons()) {
        hash.add(static_cast<std::uint64_t>(static_cast<std::int64_t>(entry->ammo)));
        hash.add(std::uint64_t{entry->weapon->getShotsFired()});
    }
    for (const Worm* const worm : team.getWorms()) {
        hash.add(worm->getWormName());
        hash.add(worm->getHealth());
        hash.add(worm->getPosition());
        hash.add(worm->jumpVelocity);
        hash.add(worm->getAimDirection());
    }
}

} // namespace

Worm* world::activeWorm() {
    Worm* active = nullptr;
    forEachWorm([&](Worm* worm) {
        if (worm->isActive())
            active = worm;
    });
    return active;
}

Worm* world::worm(const std::string& name) {
    Worm* found = nullptr;
    forEachWorm([&](Worm* worm) {
        if (worm->getWormName() == name)
            found = worm;
    });
    return found;
}

int world::countNodes(const std::string& nodeName) {
    int count = 0;
    for (const SceneNode* const node : theModuleManager->getSceneRoot()->getChildren())
        count += node->getNodeName() == nodeName ? 1 : 0;
    return count;
}

std::size_t world::landFaces() {
    std::size_t faces = 0;
    for (SceneNode* const node : theModuleManager->getSceneRoot()->getChildren())
        if (const csgObject* const land = node->asCsgNode())
            faces += land->countFaces();
    return faces;
}

std::uint64_t world::stateHash() {
    Hash hash;
    if (theModuleManager->getTeamManager() != nullptr)
        for (const Team* const team : theModuleManager->getTeamManager()->getTeams())
            addTeam(hash, *team);
    for (SceneNode* const node : theModuleManager->getSceneRoot()->getChildren()) {
        hash.add(node->getNodeName());
        hash.add(node->getPosition());
        if (const csgObject* const land = node->asCsgNode())
            hash.add(hashOf(*land));
    }
    return hash.get();
}
