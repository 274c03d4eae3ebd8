#pragma once

// A run directory of its own for a test: made empty, current while it lives, removed afterwards.

#include "csg/solid/csg_mesh_data.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// Makes a directory the current one while it lives.
class CurrentDirectory {
public:
    explicit CurrentDirectory(const std::filesystem::path& directory);
    ~CurrentDirectory();
    CurrentDirectory(const CurrentDirectory&) = delete;
    CurrentDirectory& operator=(const CurrentDirectory&) = delete;

private:
    std::filesystem::path previous;
};

class TestData {
public:
    TestData();
    ~TestData();

    /// Writes a file, given by its path from the run directory.
    void write(const std::string& path, std::string_view contents) const;
    void remove(const std::string& path) const;
    /// Writes "csg/" + name + ".csg"; every part is textured with the data's own texture names.
    void writeSolid(const std::string& name, const csgMeshData& data) const;

    /// A team as the team files describe it.
    struct TeamDescription {
        std::string name;
        std::vector<std::string> worms;
        int wormCount;
    };
    void writeTeams(const std::vector<TeamDescription>& teams) const;

    /// Puts the shipped models, textures, sounds and crater solids in place of what is there.
    void useShippedContent() const;
    /// The level "flat": a slab 200 wide whose top lies at height 10, the three crater solids, and teams.
    void writeFlatLevel(const std::vector<TeamDescription>& teams) const;

private:
    std::filesystem::path directory;
    CurrentDirectory current;
};

/// The shipped data as the current directory while it lives.
struct ShippedData : CurrentDirectory {
    ShippedData() : CurrentDirectory(BRACKENMOOR_DATA_DIR) {}
};
