#include "core/app/game_loader.h"

#include "core/app/level_files.h"
#include "core/base/data_error.h"
#include "core/base/data_limits.h"
#include "core/base/file_access.h"
#include "core/base/latin1.h"
#include "core/base/log.h"
#include "core/scene/scene_node.h"
#include "core/services/module_manager.h"
#include "core/teams/team.h"
#include "core/teams/team_manager.h"
#include "csg/land/csg_object.h"
#include "csg/solid/csg_file.h"
#include "game/armoury/armoury.h"
#include "render/view/milkshape_model.h"
#include "render/view/water_node.h"

#include <algorithm>
#include <utility>

namespace {

constexpr const char* teamListFile = "teams/teams.tm";
constexpr const char* levelListFile = "level/levels.lev";

std::string teamFileOf(const std::string& teamName) {
    return "teams/" + teamName + ".tm";
}

bool liesInReach(const csgMesh& solid) {
    return std::all_of(solid.getVertices().begin(), solid.getVertices().end(),
                       [](const auto& vertex) { return isInReach(vertex->position); });
}

bool isPlaceable(const SolidEntry& entry) {
    const auto areCoordinates = [](const double(&triple)[3]) {
        return isCoordinate(triple[0]) && isCoordinate(triple[1]) && isCoordinate(triple[2]);
    };
    return areCoordinates(entry.scale) && areCoordinates(entry.rotation) && areCoordinates(entry.translation);
}

void sayAll(const std::string& file, const std::vector<TextFault>& faults) {
    for (const TextFault& fault : faults)
        sayDataFault(file, fault);
}

void sayLeftOut(const std::string& levelFile, const SolidEntry& entry, const std::string& why) {
    sayDataFault(levelFile, {entry.line, "\"" + entry.name + "\" is left out: " + why});
}

/// The box around the landscape of a scene.
BoundingBox landscapeBox(SceneNode& root) {
    BoundingBox box;
    root.forEachChild([&box](SceneNode* child) {
        if (child->asCsgNode() != nullptr)
            box.merge(child->getLocalBounds());
    });
    return box;
}

} // namespace

GameLoader::GameLoader() {
    logLine("Construktor GameLoader\n");
}

GameLoader::~GameLoader() {
    logLine("Destruktor GameLoader\n");
}

SceneNode* GameLoader::loadLevel(const std::string& levelName) {
    const std::string levelFile = "./level/" + levelName + ".lev";
    std::string levelText;
    const bool opened = readWholeFile(levelFile, levelText);
    auto root = std::make_unique<SceneNode>("root");
    addSky(*root);
    if (!opened) {
        sayDataFault(levelFile, {0, "the level file cannot be opened"});
        return nullptr;
    }
    if (!addLandscape(*root, levelFile, std::move(levelText)))
        return nullptr;

    SceneNode* const scene = root.release();
    theModuleManager->setSceneRoot(scene);
    scene->update();
    new TeamManager; // registers itself
    if (!addTeams(landscapeBox(*scene))) {
        endRound();
        return nullptr;
    }
    TeamManager* const teams = theModuleManager->getTeamManager();
    if (teams->getTeamCount() == 0) {
        sayDataFault(levelFile, {0, "no worm found ground to stand on"});
        endRound();
        return nullptr;
    }
    teams->startTurn();
    auto* const water = new WaterNode;
    water->setPosition(0.0f, 0.0f, 0.0f);
    scene->addChild(water);
    return scene;
}

void GameLoader::addSky(SceneNode& root) {
    auto* const sky = new MilkShapeModel("<MilkShape Model>");
    if (!sky->load("sky"))
        logLine("Can't load Sky \n");
    root.addChild(sky);
}

bool GameLoader::addLandscape(SceneNode& root, const std::string& levelFile, std::string text) {
    const LevelText level = readLevelText(std::move(text));
    sayAll(levelFile, level.faults);
    if (!level.usable)
        return false;
    std::size_t faces = 0;
    std::set<std::string> unfit;
    for (const SolidEntry& entry : level.solids) {
        std::unique_ptr<csgObject> solid = loadSolid(levelFile, entry, unfit);
        if (solid == nullptr)
            continue;
        // What is left out counts too: it takes as long to load.
        faces += solid->countFaces();
        if (faces > mostFaces) {
            sayDataFault(levelFile, {entry.line, "more than " + std::to_string(mostFaces) + " faces in all"});
            return false;
        }
        placeSolid(*solid, entry);
        if (!liesInReach(*solid)) {
            logLine(" GameLoader: the level places '%s' out of reach \n", entry.name.c_str());
            sayLeftOut(levelFile, entry, "it is placed out of reach");
            continue;
        }
        csgObject* const placed = solid.release();
        root.addChild(placed);
        placed->rebuildArrays();
    }
    return true;
}

std::unique_ptr<csgObject> GameLoader::loadSolid(const std::string& levelFile, const SolidEntry& entry,
                                                 std::set<std::string>& unfit) {
    if (!isPlaceable(entry)) {
        sayLeftOut(levelFile, entry, "it has a number beyond a million");
        return nullptr;
    }
    auto solid = std::make_unique<csgObject>();
    if (!unfit.contains(entry.name) && solid->load("./csg/" + entry.name))
        return solid;
    // Once unfit, said already.
    if (unfit.insert(entry.name).second)
        sayDataFault("./csg/" + entry.name + ".csg", solid->getLoadFault());
    return nullptr;
}

bool GameLoader::addTeams(const BoundingBox& levelBox) {
    std::string text;
    if (!readWholeFile(teamListFile, text)) {
        sayDataFault(teamListFile, {0, "the team list cannot be opened"});
        return false;
    }
    const TeamListText list = readTeamListText(std::move(text));
    sayAll(teamListFile, list.faults);
    return list.usable && std::all_of(list.teams.begin(), list.teams.end(),
                                      [&](const TeamEntry& entry) { return addTeam(entry, levelBox); });
}

bool GameLoader::addTeam(const TeamEntry& entry, const BoundingBox& levelBox) {
    if (entry.wormCount <= 0)
        return true;
    std::vector<std::string> wormNames;
    float r = 1.0f;
    float g = 1.0f;
    float b = 1.0f;
    readTeamFile(entry.name, wormNames, r, g, b);
    if (wormNames.empty()) {
        sayDataFault(teamFileOf(entry.name),
                     {0, "no names for the " + std::to_string(entry.wormCount) + " worms of the team"});
        return false;
    }
    std::transform(wormNames.begin(), wormNames.end(), wormNames.begin(), latin1Of);
    auto team = std::make_unique<Team>(latin1Of(entry.name), &levelBox, r, g, b, wormNames,
                                       static_cast<unsigned>(entry.wormCount), issueWeapons);
    if (team->getCurrentWorm() != nullptr)
        theModuleManager->getTeamManager()->addTeam(team.release());
    return true;
}

void GameLoader::readTeamFile(const std::string& teamName, std::vector<std::string>& wormNames, float& r, float& g,
                              float& b) {
    std::string text;
    if (!readWholeFile(teamFileOf(teamName), text)) {
        sayDataFault(teamFileOf(teamName), {0, "the team file cannot be opened"});
        return;
    }
    const TeamText team = readTeamText(std::move(text), {r, g, b});
    sayAll(teamFileOf(teamName), team.faults);
    wormNames.insert(wormNames.end(), team.wormNames.begin(), team.wormNames.end());
    r = team.colour[0];
    g = team.colour[1];
    b = team.colour[2];
}

void placeSolid(csgMesh& solid, const SolidEntry& entry) {
    solid.scale(entry.scale[0], entry.scale[1], entry.scale[2]);
    solid.rotateX(entry.rotation[0]);
    solid.rotateY(entry.rotation[1]);
    solid.rotateZ(entry.rotation[2]);
    solid.translate(entry.translation[0], entry.translation[1], entry.translation[2]);
}

void endRound() {
    delete theModuleManager->getSceneRoot();
    theModuleManager->setSceneRoot(nullptr);
    delete theModuleManager->getTeamManager();
    theModuleManager->setTeamManager(nullptr);
}

void readLevelList(std::vector<std::string>& names) {
    std::string text;
    if (!readWholeFile(levelListFile, text))
        return;
    const LevelListText list = readLevelListText(std::move(text));
    sayAll(levelListFile, list.faults);
    names.insert(names.end(), list.names.begin(), list.names.end());
}
