#pragma once

// Turns a level name into a ready scene: sky, landscape, worms dropped onto it, water; teams and the first turn.
//
// What cannot be played ends in null: a level file or team list that cannot be opened or is refused
// (core/app/level_files.h), more than `mostFaces` in the landscape, a team with worms but without names for them, a
// level on which no worm found ground. What was registered by then is unregistered and destroyed. A solid, sky, texture
// or model that cannot be loaded is skipped, and so is a solid with a number or, once placed, a corner beyond
// `largestCoordinate`. A team without a single worm takes no part. A team file without a readable colour gives white.
// All of it but textures and models is said (core/base/data_error.h).

#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <vector>

class BoundingBox;
class SceneNode;
class csgMesh;
class csgObject;
struct SolidEntry;
struct TeamEntry;

class GameLoader {
public:
    /// Faces of a landscape. An entry that names a large solid a thousand times takes a few bytes.
    static constexpr std::size_t mostFaces = 250'000;

    GameLoader();
    ~GameLoader();
    GameLoader(const GameLoader&) = delete;
    GameLoader& operator=(const GameLoader&) = delete;

    /// Builds the scene and the teams, registers both and starts the first turn. The root belongs to the registry's
    /// slot and to the caller; null when the level cannot be played.
    SceneNode* loadLevel(const std::string& levelName);
    /// Reads worm names, appended to the vector, and the colour of a team. What the file does not hold stays as it is.
    void readTeamFile(const std::string& teamName, std::vector<std::string>& wormNames, float& r, float& g, float& b);

private:
    static void addSky(SceneNode& root);
    [[nodiscard]] static bool addLandscape(SceneNode& root, const std::string& levelFile, std::string text);
    /// The solid of an entry, as its file has it; null, and said, when there is none or its place is beyond all reach.
    /// Files that cannot be loaded are remembered, and not read again for every entry that names them.
    static std::unique_ptr<csgObject> loadSolid(const std::string& levelFile, const SolidEntry& entry,
                                                std::set<std::string>& unfit);
    [[nodiscard]] bool addTeams(const BoundingBox& levelBox);
    [[nodiscard]] bool addTeam(const TeamEntry& entry, const BoundingBox& levelBox);
};

/// Scales, turns about x, y and z, and moves a solid that is as its file has it to where its entry says.
void placeSolid(csgMesh& solid, const SolidEntry& entry);

/// Ends the round under way: destroys the registered scene, then the teams, and empties both slots. The scene goes
/// first, so that a worm never holds a weapon of a team that is gone.
void endRound();

/// Reads a list of names from "level/levels.lev"; it stays empty when the file cannot be opened. A missing name repeats
/// the last one read. Its faults are said.
void readLevelList(std::vector<std::string>& names);
