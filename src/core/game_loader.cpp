#include "core/game_loader.h"

#include "core/data_error.h"
#include "core/file_access.h"
#include "core/log.h"
#include "core/module_manager.h"
#include "core/scene_node.h"
#include "core/team.h"
#include "core/team_manager.h"
#include "core/text_reader.h"
#include "csg/csg_object.h"
#include "render/milkshape_model.h"
#include "render/water_node.h"

#include <memory>

namespace {

constexpr const char* teamListFile = "teams/teams.tm";
constexpr const char* levelListFile = "level/levels.lev";

/// One solid of a level file: its name and how it is placed.
struct SolidEntry {
    std::string name;
    double scale[3] = {1.0, 1.0, 1.0};
    double rotation[3] = {0.0, 0.0, 0.0};
    double translation[3] = {0.0, 0.0, 0.0};

    void read(TextReader& in) {
        in.read(name);
        for (double* const triple : {scale, rotation, translation})
            for (int axis = 0; axis < 3; ++axis)
                in.read(triple[axis]);
    }
};

void addSolid(SceneNode& root, const SolidEntry& entry) {
    auto solid = std::make_unique<csgObject>();
    if (!solid->load("./csg/" + entry.name))
        return;
    csgObject* const placed = solid.release();
    root.addChild(placed);
    placed->scale(entry.scale[0], entry.scale[1], entry.scale[2]);
    placed->rotateX(entry.rotation[0]);
    placed->rotateY(entry.rotation[1]);
    placed->rotateZ(entry.rotation[2]);
    placed->translate(entry.translation[0], entry.translation[1], entry.translation[2]);
    placed->rebuildArrays();
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

/// Reads `count` names; a name that is missing repeats the last one read, up to a limit.
void readNames(TextReader& in, int count, std::vector<std::string>& names) {
    std::string name;
    for (int i = 0; i < count; ++i) {
        if (!in.read(name) && i >= GameLoader::mostRepeatedNames)
            return;
        names.push_back(name);
    }
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
        reportDataError(levelFile, "the level file cannot be opened");
        return nullptr;
    }
    if (!addLandscape(*root, levelFile, levelText))
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
        reportDataError(levelFile, "no worm found ground to stand on");
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

bool GameLoader::addLandscape(SceneNode& root, const std::string& levelFile, const std::string& text) {
    TextReader in(text);
    int count = 0;
    if (!in.read(count) || count < 0) {
        reportDataError(levelFile, "the number of solids cannot be read");
        return false;
    }
    if (count > mostSolids) {
        reportDataError(levelFile, "more than " + std::to_string(mostSolids) + " solids");
        return false;
    }
    SolidEntry entry;
    for (int i = 0; i < count; ++i) {
        SolidEntry next = entry;
        next.read(in);
        // Of an entry that breaks off nothing counts: the last complete one stands in for it.
        if (!in.hasFailed())
            entry = next;
        addSolid(root, entry);
    }
    return true;
}

bool GameLoader::addTeams(const BoundingBox& levelBox) {
    std::string text;
    if (!readWholeFile(teamListFile, text)) {
        reportDataError(teamListFile, "the team list cannot be opened");
        return false;
    }
    TextReader list(std::move(text));
    int count = 0;
    if (!list.read(count) || count <= 0 || count > mostTeams) {
        reportDataError(teamListFile, count > mostTeams ? "more than " + std::to_string(mostTeams) + " teams"
                                                        : std::string("the team list names no team"));
        return false;
    }
    std::string teamName;
    int wormCount = 0;
    for (int i = 0; i < count; ++i)
        if (!addTeam(list, teamName, wormCount, levelBox))
            return false;
    return true;
}

bool GameLoader::addTeam(TextReader& list, std::string& teamName, int& wormCount, const BoundingBox& levelBox) {
    list.read(teamName);
    list.read(wormCount);
    if (teamName.empty()) {
        reportDataError(teamListFile, "the name of a team is missing");
        return false;
    }
    if (wormCount > mostWorms) {
        reportDataError(teamListFile, "team " + teamName + " has more than " + std::to_string(mostWorms) + " worms");
        return false;
    }
    if (wormCount <= 0)
        return true;
    std::vector<std::string> wormNames;
    float r = 1.0f;
    float g = 1.0f;
    float b = 1.0f;
    readTeamFile(teamName, wormNames, r, g, b);
    if (wormNames.empty()) {
        reportDataError("teams/" + teamName + ".tm",
                        "no names for the " + std::to_string(wormCount) + " worms of the team");
        return false;
    }
    auto team = std::make_unique<Team>(teamName, &levelBox, r, g, b, wormNames, static_cast<unsigned>(wormCount));
    if (team->getCurrentWorm() != nullptr)
        theModuleManager->getTeamManager()->addTeam(team.release());
    return true;
}

void GameLoader::readTeamFile(const std::string& teamName, std::vector<std::string>& wormNames, float& r, float& g,
                              float& b) {
    std::string text;
    if (!readWholeFile("teams/" + teamName + ".tm", text))
        return;
    TextReader in(std::move(text));
    int count = 0;
    in.read(count);
    readNames(in, count, wormNames);
    in.read(r);
    in.read(g);
    in.read(b);
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
    TextReader in(std::move(text));
    int count = 0;
    in.read(count);
    readNames(in, count, names);
}
