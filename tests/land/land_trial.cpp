// Tries land, that of the shipped levels or made ones: craters where explosions would be and where the arithmetic is at
// its worst, an independent judgement of the volume after each, and of everything that is left in the end.
//
//   land_trial [--level NAME | --made NAME] [--craters N] [--seed S] [--each]
//
// One line for each solid, one for the whole; exit status 1 when something is not what it should be.

#include "core/app/game_loader.h"
#include "core/app/level_files.h"
#include "core/base/file_access.h"
#include "csg/solid/csg_file.h"
#include "csg/solid/csg_measure.h"
#include "land/land_judge.h"
#include "land/made_lands.h"
#include "support/test_data.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <random>
#include <stdexcept>
#include <utility>

namespace {

std::vector<SolidEntry> readLevel(const std::string& level) {
    std::string text;
    if (!readWholeFile("level/" + level + ".lev", text))
        throw std::runtime_error("level '" + level + "' cannot be opened");
    LevelText contents = readLevelText(std::move(text));
    if (!contents.usable)
        throw std::runtime_error("level '" + level + "': " + contents.faults.back().text);
    return std::move(contents.solids);
}

std::unique_ptr<csgMesh> loadMesh(const std::string& name) {
    csgMeshData data;
    TextFault fault;
    if (readCsgFile("csg/" + name + ".csg", data, fault) != csgReadResult::ok)
        throw std::runtime_error("cannot load solid '" + name + "'");
    auto mesh = std::make_unique<csgMesh>();
    mesh->build(data);
    return mesh;
}

std::unique_ptr<csgMesh> placed(const SolidEntry& entry) {
    auto mesh = loadMesh(entry.name);
    placeSolid(*mesh, entry);
    return mesh;
}

/// A crater that takes this share of its tool too much or too little has a wrong region.
constexpr double wrongShare = 1e-6;

/// The same tool within this distance (world units) of where it was before cuts nothing.
constexpr double samePlace = 1e-3;

bool showEach = false;

constexpr const char* toolNames[] = {"shotgunsphere", "sphere", "sphereDynamite"};

struct Crater {
    std::string tool;
    csgVector centre;
};

/// The tool of a crater, scaled by how much the land is smaller than life.
std::unique_ptr<csgMesh> toolOf(const Crater& crater, double scale) {
    auto tool = loadMesh(crater.tool);
    tool->scale(scale, scale, scale);
    tool->translate(crater.centre.x, crater.centre.y, crater.centre.z);
    return tool;
}

struct Land {
    std::string name;
    std::unique_ptr<csgMesh> untouched;
    std::unique_ptr<csgMesh> carved;
    Tools tools{};
    std::vector<Crater> craters{};
    std::size_t removed = 0;
    std::size_t mended = 0;
    std::size_t keptUncut = 0;
    std::size_t wrongCuts = 0;       ///< after which the volume was not what it should be
    double worstVolume = 0.0;        ///< off by this share of the tool
    std::vector<double> durations{}; ///< ms of processor time
};

/// Chooses where the next crater is.
class Aim {
public:
    Aim(std::uint32_t seed, const std::vector<Land>& allLand, Aiming where, double toolScale, int count)
        : random(seed), land(allLand), aiming(where), scale(toolScale), craters(count) {}

    Crater next() {
        Crater crater{toolNames[random() % std::size(toolNames)], {}};
        const csgBounds& box = *land.front().untouched->getBounds();
        const csgVector size = box.max - box.min;
        switch (aiming) {
        case Aiming::mixed:
            crater = mixed(crater.tool);
            break;
        case Aiming::along: {
            // From end to end of the longest side, on the surface that looks up or aside.
            double csgVector::*const axis = size.x >= size.y ? &csgVector::x : &csgVector::y;
            crater.tool = toolNames[0];
            crater.centre = box.centre();
            (axis == &csgVector::x ? crater.centre.y : crater.centre.x) = axis == &csgVector::x ? box.max.y : box.max.x;
            crater.centre.*axis = box.min.*axis + size.*axis * (static_cast<double>(earlier.size()) + 0.5) / craters;
            crater.centre += {uniform(-0.5, 0.5), uniform(-0.5, 0.5), uniform(-0.5, 0.5)};
            break;
        }
        case Aiming::atCorner:
            // Near the middle of an edge of the box.
            crater.centre = {box.max.x + uniform(-4.0, 4.0), box.max.y + uniform(-4.0, 4.0), uniform(-9.0, 9.0)};
            break;
        case Aiming::samePlace:
            crater =
                earlier.empty() ? Crater{toolNames[1], box.centre() + csgVector{0, size.y / 2.0, 0}} : earlier.front();
            break;
        case Aiming::nearlySamePlace:
            crater = earlier.empty() ? Crater{toolNames[1], rounded(surfacePoint(), 65536.0)} : earlier.front();
            if (!earlier.empty()) {
                csgVector off{uniform(-1.0, 1.0), uniform(-1.0, 1.0), uniform(-1.0, 1.0)};
                off.normalize();
                crater.centre += off * uniform(1.1e-4, 2e-3);
            }
            break;
        }
        earlier.push_back(crater);
        return crater;
    }

private:
    Crater mixed(const std::string& tool) {
        // Half of them where explosions would be, the others in equal shares where it is hardest.
        const auto kind = random() % 20;
        if (!earlier.empty() && kind == 0)
            return earlier[random() % earlier.size()];
        if (!earlier.empty() && kind == 1)
            return {tool, earlier[random() % earlier.size()].centre};
        if (!earlier.empty() && kind <= 4)
            return slidAlongAFace(earlier[random() % earlier.size()]);
        if (kind <= 6)
            return {tool, anyFace().cornerPosition(random() % 3)};
        if (kind <= 8)
            return {tool, anyFace().centre()};
        if (kind == 9)
            return {tool, rounded(anyFace().centre(), 1.0)};
        return {tool, rounded(surfacePoint(), 65536.0)};
    }

    /// The same tool, moved within the plane of one of its faces: that face lies in a wall of the earlier crater.
    Crater slidAlongAFace(const Crater& crater) {
        const auto tool = loadMesh(crater.tool);
        const csgFaceList& part = tool->getParts()[0];
        const csgFace& face = *part[random() % part.size()];
        const csgVector along = face.cornerPosition(1) - face.cornerPosition(0);
        return {crater.tool, crater.centre + along * (scale * uniform(-1.5, 1.5))};
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
        while (face->area() < uniform(0.0, 60.0 * scale * scale))
            face = &anyFace();
        double a = uniform(0.0, 1.0);
        double b = uniform(0.0, 1.0);
        if (a + b > 1.0) {
            a = 1.0 - a;
            b = 1.0 - b;
        }
        const csgVector& o = face->cornerPosition(0);
        return o + (face->cornerPosition(1) - o) * a + (face->cornerPosition(2) - o) * b + face->normal * (0.5 * scale);
    }

    /// To the grid of so many places a unit; single precision leaves a rocket some 65536.
    static csgVector rounded(const csgVector& p, double grid) {
        return {std::round(p.x * grid) / grid, std::round(p.y * grid) / grid, std::round(p.z * grid) / grid};
    }
    double uniform(double low, double high) { return std::uniform_real_distribution<double>(low, high)(random); }

    std::mt19937 random;
    const std::vector<Land>& land;
    Aiming aiming;
    double scale;
    int craters;
    std::vector<Crater> earlier;
};

void carve(Land& land, const Crater& crater, double scale) {
    const auto tool = toolOf(crater, scale);
    const double before = volumeOf(*land.carved);
    const double toolVolume = volumeOf(*tool);
    const double hit = commonVolume(*land.carved, *tool);
    const std::clock_t start = std::clock();
    land.carved->carve(*tool);
    land.durations.push_back(1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    const csgMesh::CarveStats& stats = land.carved->getCarveStats();
    land.mended += stats.mended;
    land.removed += stats.removed;
    land.keptUncut += stats.keptUncut;
    const auto isSame = [&](const Crater& earlier) {
        return earlier.tool == crater.tool && (earlier.centre - crater.centre).length() < samePlace;
    };
    const bool isRepeat = std::any_of(land.craters.begin(), land.craters.end(), isSame);
    if (!isRepeat)
        land.craters.push_back(crater);
    const double expected = isRepeat ? before : before - hit;
    const double off = std::fabs(volumeOf(*land.carved) - expected) / toolVolume;
    land.worstVolume = std::max(land.worstVolume, off);
    land.wrongCuts += off > wrongShare ? 1U : 0U;
    if (showEach)
        std::printf("%zu: %s at %.9g %.9g %.9g: %.3g units cut, off by %.0e of the tool, %zu faces, %.1f ms%s\n",
                    land.durations.size(), crater.tool.c_str(), crater.centre.x, crater.centre.y, crater.centre.z, hit,
                    off, land.carved->countFaces(), land.durations.back(), isRepeat ? ", a repeat" : "");
    if (!isRepeat)
        land.tools.push_back(toolOf(crater, scale));
}

/// What a solid must keep, and how well it did. False when something is wrong.
bool judge(const Land& land) {
    constexpr std::size_t columnCount = 20000;
    /// Slivers between corners of a crater's rim run below its curve.
    constexpr double deepestAllowed = 2e-3;
    constexpr double widestAllowed = 1e-6;
    constexpr std::size_t openAllowed = 2;
    const OpenEdges open = measureOpenEdges(*land.carved);
    const Columns columns = compareColumns(*land.untouched, land.tools, *land.carved, columnCount);
    const double deepest = deepestFace(*land.carved, land.tools);
    std::vector<double> durations = land.durations;
    std::sort(durations.begin(), durations.end());
    std::printf("%s: faces %zu -> %zu (removed %zu, mended %zu, kept uncut %zu), %zu of %zu cuts wrong (volume off by "
                "%.0e of the tool), columns %zu wrong of %zu (%zu through craters, worst off by %.0e), deepest face "
                "%.0e, open edges %zu, widest gap %.1e, %.1f ms a cut, at most %.1f\n",
                land.name.c_str(), land.untouched->countFaces(), land.carved->countFaces(), land.removed, land.mended,
                land.keptUncut, land.wrongCuts, durations.size(), land.worstVolume, columns.wrong, columns.tried,
                columns.touched, columns.worst, deepest, open.count, open.widestGap, durations[durations.size() / 2],
                durations.back());
    bool good = true;
    const auto check = [&good](bool holds, const char* fault) {
        if (!holds)
            std::printf("FAULT: %s\n", fault);
        good = good && holds;
    };
    check(land.wrongCuts == 0, "a cut took too much or too little");
    check(columns.wrong == 0, "columns of land or air are missing");
    check(columns.touched > 0, "the craters hit nothing");
    check(deepest <= deepestAllowed, "a face is left in a crater");
    check(open.widestGap <= widestAllowed, "a gap is open");
    check(open.count <= openAllowed, "too many edges are open");
    return good;
}

/// Craters in lands that lie together; how many of them have faults in the end.
std::size_t tryLands(std::vector<Land> lands, Aiming aiming, double toolScale, int craters, std::uint32_t seed) {
    Aim aim(seed, lands, aiming, toolScale, craters);
    const auto isGone = [](const Land& land) { return land.carved->countFaces() == 0; };
    for (int i = 0; i < craters && std::none_of(lands.begin(), lands.end(), isGone); ++i) {
        const Crater crater = aim.next();
        for (Land& land : lands)
            carve(land, crater, toolScale);
    }
    return static_cast<std::size_t>(
        std::count_if(lands.begin(), lands.end(), [](const Land& land) { return !judge(land); }));
}

std::size_t tryLevel(const std::string& level, int craters, std::uint32_t seed) {
    const ShippedData data;
    std::vector<Land> lands;
    for (const SolidEntry& entry : readLevel(level))
        lands.push_back({level + ": " + entry.name, placed(entry), placed(entry)});
    return tryLands(std::move(lands), Aiming::mixed, 1.0, craters, seed);
}

std::size_t tryMade(const std::string& name, int craters, std::uint32_t seed) {
    const ShippedData data;
    std::size_t faults = 0;
    for (const MadeLand& made : makeLands(name, seed)) {
        Land land{name, std::make_unique<csgMesh>(), std::make_unique<csgMesh>()};
        land.untouched->build(made.data);
        land.carved->build(made.data);
        std::vector<Land> lands;
        lands.push_back(std::move(land));
        faults +=
            tryLands(std::move(lands), made.aiming, made.toolScale, made.craters > 0 ? made.craters : craters, seed++);
    }
    return faults;
}

} // namespace

int main(int argumentCount, char** values) {
    std::string level = "moorholm";
    std::string made;
    int craters = 300;
    std::uint32_t seed = 1;
    CLI::App app("Carves craters into land and judges what is left.", "land_trial");
    auto* const levelOption = app.add_option("--level", level, "as the level list names it");
    app.add_option("--made", made, "land that no level has")
        ->check(CLI::IsMember(namesOfMadeLands()))
        ->excludes(levelOption);
    app.add_option("--craters", craters);
    app.add_option("--seed", seed, "another one places the craters elsewhere");
    app.add_flag("--each", showEach, "a line for every cut");
    CLI11_PARSE(app, argumentCount, values);
    try {
        const std::size_t faults = made.empty() ? tryLevel(level, craters, seed) : tryMade(made, craters, seed);
        std::printf("%s: faults in %zu solids\n", made.empty() ? level.c_str() : made.c_str(), faults);
        return faults == 0 ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "land_trial: %s\n", error.what());
        return 2;
    }
}
