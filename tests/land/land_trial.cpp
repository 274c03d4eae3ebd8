// Tries the land of the shipped levels: craters where explosions would be and where the arithmetic is at its worst,
// then an independent judgement of what is left.
//
//   land_trial [--level NAME] [--craters N] [--seed S]
//
// One line for each solid, one for the level; exit status 1 when something is not what it should be.

#include "core/file_access.h"
#include "core/game_loader.h"
#include "core/level_files.h"
#include "csg/csg_file.h"
#include "csg/csg_measure.h"
#include "land/land_judge.h"
#include "support/test_data.h"

#include <CLI/CLI.hpp>

#include <cmath>
#include <cstdio>
#include <random>
#include <stdexcept>
#include <utility>

namespace {

std::vector<SolidEntry> readLevel(const std::string& level) {
    std::string text;
    std::vector<SolidEntry> solids;
    std::vector<TextFault> faults = {{0, "cannot be opened"}};
    if (!readWholeFile("level/" + level + ".lev", text) || !readLevelText(std::move(text), solids, faults))
        throw std::runtime_error("level '" + level + "': " + faults.back().text);
    return solids;
}

void loadMesh(csgMesh& mesh, const std::string& name) {
    csgMeshData data;
    TextFault fault;
    if (readCsgFile("csg/" + name + ".csg", data, fault) != csgReadResult::ok)
        throw std::runtime_error("cannot load solid '" + name + "'");
    mesh.build(data);
}

std::unique_ptr<csgMesh> placed(const SolidEntry& entry) {
    auto mesh = std::make_unique<csgMesh>();
    loadMesh(*mesh, entry.name);
    placeSolid(*mesh, entry);
    return mesh;
}

std::unique_ptr<csgMesh> toolAt(const std::string& name, const csgVector& centre) {
    auto tool = std::make_unique<csgMesh>();
    loadMesh(*tool, name);
    tool->translate(centre.x, centre.y, centre.z);
    return tool;
}

constexpr const char* tools[] = {"shotgunsphere", "sphere", "sphereDynamite"};

struct Crater {
    std::string tool;
    csgVector centre;
};

struct Land {
    std::string name;
    std::unique_ptr<csgMesh> untouched;
    std::unique_ptr<csgMesh> carved;
    std::unique_ptr<csgMesh> rough; ///< the same cuts, their gaps left open
    std::unique_ptr<LandJudge> judge;
    std::size_t removed = 0;
    std::size_t mended = 0;
};

/// Chooses where the next crater is.
class Aim {
public:
    Aim(std::uint32_t seed, const std::vector<Land>& allLand) : random(seed), land(allLand) {}

    Crater next() {
        const std::string tool = tools[random() % std::size(tools)];
        // Half of them where explosions would be, the others in equal shares where it is hardest.
        const auto kind = random() % 20;
        Crater crater{tool, {}};
        if (!earlier.empty() && kind == 0)
            crater = earlier[random() % earlier.size()];
        else if (!earlier.empty() && kind == 1)
            crater = {tool, earlier[random() % earlier.size()].centre};
        else if (!earlier.empty() && kind <= 4)
            crater = slidAlongAFace(earlier[random() % earlier.size()]);
        else if (kind <= 6)
            crater.centre = anyFace().cornerPosition(random() % 3);
        else if (kind <= 8)
            crater.centre = anyFace().centre();
        else if (kind == 9)
            crater.centre = rounded(anyFace().centre());
        else
            crater.centre = asExploded(surfacePoint());
        earlier.push_back(crater);
        return crater;
    }

private:
    /// The same tool, moved within the plane of one of its faces: that face lies in a wall of the earlier crater.
    Crater slidAlongAFace(const Crater& crater) {
        csgMesh tool;
        loadMesh(tool, crater.tool);
        const csgFaceList& part = tool.getParts()[0];
        const csgFace& face = *part[random() % part.size()];
        const csgVector along = face.cornerPosition(1) - face.cornerPosition(0);
        return {crater.tool, crater.centre + along * uniform(-1.5, 1.5)};
    }

    const csgFace& anyFace() {
        for (;;) {
            const csgMesh& mesh = *land[random() % land.size()].carved;
            const csgFaceList& part = mesh.getParts()[random() % mesh.getParts().size()];
            if (!part.empty())
                return *part[random() % part.size()];
        }
    }

    /// By area, so that fine rubble does not draw all the fire.
    csgVector surfacePoint() {
        const csgFace* face = &anyFace();
        while (face->area() < uniform(0.0, 60.0))
            face = &anyFace();
        double a = uniform(0.0, 1.0);
        double b = uniform(0.0, 1.0);
        if (a + b > 1.0) {
            a = 1.0 - a;
            b = 1.0 - b;
        }
        const csgVector& o = face->cornerPosition(0);
        return o + (face->cornerPosition(1) - o) * a + (face->cornerPosition(2) - o) * b + face->normal * 0.5;
    }

    /// To about the grid that single precision leaves a rocket.
    static csgVector asExploded(const csgVector& p) {
        constexpr double grid = 65536.0;
        return {std::round(p.x * grid) / grid, std::round(p.y * grid) / grid, std::round(p.z * grid) / grid};
    }
    static csgVector rounded(const csgVector& p) { return {std::round(p.x), std::round(p.y), std::round(p.z)}; }
    double uniform(double low, double high) { return std::uniform_real_distribution<double>(low, high)(random); }

    std::mt19937 random;
    const std::vector<Land>& land;
    std::vector<Crater> earlier;
};

csgVector centreOf(const csgMesh& mesh) {
    return mesh.getBounds()->centre();
}

void carve(Land& land, const Crater& crater) {
    const auto tool = toolAt(crater.tool, crater.centre);
    const csgVector before = centreOf(*tool);
    land.carved->carve(*tool);
    const csgVector stepAside = centreOf(*tool) - before;
    const csgMesh::CarveStats& stats = land.carved->getCarveStats();
    land.mended += stats.mended;
    land.removed += stats.removed;
    land.judge->addTool(toolAt(crater.tool, crater.centre + stepAside));
    land.rough->carve(*toolAt(crater.tool, crater.centre), csgMesh::CarveFinish::rough);
}

/// What a level must keep, and how well it did.
class Verdict {
public:
    void add(const std::string& level, const Land& land) {
        const OpenEdges open = measureOpenEdges(*land.carved);
        const OpenEdges roughOpen = measureOpenEdges(*land.rough);
        const LandJudge::Columns columns = land.judge->compareColumns(*land.carved, columnCount, 1);
        const double deepest = land.judge->deepestFace(*land.carved);
        const double left = volumeOf(*land.carved);
        const double counted = volumeOf(*land.untouched) - land.judge->removedVolume(columnsPerSide, 2);
        std::printf(
            "%s: %s: faces %zu -> %zu (removed %zu, mended %zu), columns %zu wrong of %zu (%zu through craters, "
            "worst off by %.1e), deepest face %.1e, open edges %zu, widest gap %.1e (rough: %zu, %.1e)\n",
            level.c_str(), land.name.c_str(), land.untouched->countFaces(), land.carved->countFaces(), land.removed,
            land.mended, columns.wrong, columns.tried, columns.touched, columns.worst, deepest, open.count,
            open.widestGap, roughOpen.count, roughOpen.widestGap);
        check(columns.wrong == 0, "columns of land or air are missing");
        check(columns.touched > columnCount / 10, "the craters hit nothing");
        check(deepest <= deepestAllowed, "a face is left in a crater");
        check(open.widestGap <= widestAllowed, "a gap is open");
        volume += left;
        countedVolume += counted;
        openEdges += open.count;
        roughOpenEdges += roughOpen.count;
    }

    bool conclude(const std::string& level) {
        const double off = std::fabs(volume - countedVolume) / countedVolume;
        std::printf("%s: volume %.1f, counted %.1f (%.5f %% off), open edges %zu (rough: %zu)\n", level.c_str(), volume,
                    countedVolume, 100.0 * off, openEdges, roughOpenEdges);
        check(off <= volumeAllowed, "the volume is wrong");
        check(openEdges * 10 <= roughOpenEdges, "too many edges are open");
        return good;
    }

private:
    static constexpr std::size_t columnCount = 20000;
    static constexpr std::size_t columnsPerSide = 700;
    /// Slivers between corners of a crater's rim run below its curve.
    static constexpr double deepestAllowed = 5e-3;
    static constexpr double widestAllowed = 1e-6;
    static constexpr double volumeAllowed = 1e-4;

    void check(bool holds, const char* fault) {
        if (!holds)
            std::printf("FAULT: %s\n", fault);
        good = good && holds;
    }

    double volume = 0.0;
    double countedVolume = 0.0;
    std::size_t openEdges = 0;
    std::size_t roughOpenEdges = 0;
    bool good = true;
};

std::vector<Land> loadLand(const std::string& level) {
    std::vector<Land> land;
    for (const SolidEntry& entry : readLevel(level)) {
        Land one;
        one.name = entry.name;
        one.untouched = placed(entry);
        one.carved = placed(entry);
        one.rough = placed(entry);
        one.judge = std::make_unique<LandJudge>(*one.untouched);
        land.push_back(std::move(one));
    }
    return land;
}

} // namespace

int main(int argumentCount, char** values) {
    std::string level = "moorholm";
    int craters = 300;
    std::uint32_t seed = 1;
    CLI::App app("Carves craters into the land of a level and judges what is left.", "land_trial");
    app.add_option("--level", level, "as the level list names it");
    app.add_option("--craters", craters);
    app.add_option("--seed", seed, "another one places the craters elsewhere");
    CLI11_PARSE(app, argumentCount, values);
    try {
        const ShippedData data;
        std::vector<Land> land = loadLand(level);
        Aim aim(seed, land);
        for (int i = 0; i < craters; ++i) {
            const Crater crater = aim.next();
            for (Land& one : land)
                carve(one, crater);
        }
        Verdict verdict;
        for (const Land& one : land)
            verdict.add(level, one);
        return verdict.conclude(level) ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "land_trial: %s\n", error.what());
        return 2;
    }
}
