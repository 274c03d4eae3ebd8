#include "support/test_data.h"

#include "csg/solid/csg_file.h"
#include "csg/solid/csg_mesh.h"
#include "support/solids.h"

#include <atomic>
#include <fstream>

#include <unistd.h>

namespace fs = std::filesystem;

namespace {

fs::path newRunDirectory() {
    static std::atomic<int> counter = 0;
    const fs::path made =
        fs::temp_directory_path() / ("brackenmoor-test-" + std::to_string(getpid()) + "-" + std::to_string(counter++));
    for (const char* const part : {"level", "teams", "csg", "mesh", "textures", "sound"})
        fs::create_directories(made / part);
    return made;
}

} // namespace

CurrentDirectory::CurrentDirectory(const fs::path& directory) : previous(fs::current_path()) {
    fs::current_path(directory);
}

CurrentDirectory::~CurrentDirectory() {
    fs::current_path(previous);
}

TestData::TestData() : directory(newRunDirectory()), current(directory) {}

TestData::~TestData() {
    std::error_code ignored;
    fs::remove_all(directory, ignored);
}

void TestData::write(const std::string& path, std::string_view contents) const {
    fs::create_directories((directory / path).parent_path());
    std::ofstream(directory / path, std::ios::binary) << contents;
}

void TestData::remove(const std::string& path) const {
    fs::remove_all(directory / path);
}

void TestData::writeSolid(const std::string& name, const csgMeshData& data) const {
    csgMesh mesh;
    mesh.build(data);
    std::vector<std::string> textures;
    for (const csgMeshData::Part& part : data.parts)
        textures.push_back(part.texture.empty() ? "none" : part.texture);
    write("csg/" + name + ".csg", writeCsgText(mesh, textures));
}

void TestData::writeTeams(const std::vector<TeamDescription>& teams) const {
    std::string list = std::to_string(teams.size()) + "\n";
    for (const TeamDescription& team : teams) {
        list += team.name + " " + std::to_string(team.wormCount) + "\n";
        std::string file = std::to_string(team.worms.size()) + "\n";
        for (const std::string& worm : team.worms)
            file += worm + "\n";
        write("teams/" + team.name + ".tm", file + "0.25 0.5 1\n");
    }
    write("teams/teams.tm", list);
}

void TestData::writeFlatLevel(const std::vector<TeamDescription>& teams) const {
    writeSolid("slab", boxData({-100.0, -20.0, -100.0}, {100.0, 10.0, 100.0}));
    writeSolid("sphere", sphereData(2, 10.0));
    writeSolid("sphereDynamite", sphereData(2, 15.0));
    writeSolid("shotgunsphere", sphereData(1, 3.5));
    write("level/flat.lev", "1\nslab 1 1 1 0 0 0 0 0 0\n");
    write("level/levels.lev", "1\nflat\n");
    writeTeams(teams);
}

void TestData::useShippedContent() const {
    const fs::path shipped = BRACKENMOOR_DATA_DIR;
    for (const char* const part : {"mesh", "textures", "sound"}) {
        fs::remove_all(directory / part);
        fs::create_directory_symlink(shipped / part, directory / part);
    }
    for (const char* const tool : {"sphere.csg", "sphereDynamite.csg", "shotgunsphere.csg"})
        fs::copy_file(shipped / "csg" / tool, directory / "csg" / tool, fs::copy_options::overwrite_existing);
}
