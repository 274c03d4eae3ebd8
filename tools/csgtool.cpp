// What a level maker needs to know and do about .csg solids, with the game's own loader and boolean difference.
//
//   csgtool info FILE.csg                                 what is in it; exit status 1 when it is not closed
//   csgtool check FILE.csg                                a sentence for each fault; exit status 1 when there is one
//   csgtool subtract LAND.csg TOOL.csg --at X Y Z ... [--centres FILE] -o OUT.csg [--stats] [--rough]
//   csgtool obj FILE.csg -o OUT.obj                       for other 3D programs
//
// Exit status 2, one line on stderr and no output file when an argument or a file is bad.

#include "csg/solid/csg_file.h"
#include "csg/solid/csg_measure.h"
#include "file_output.h"
#include "sliver_joiner.h"
#include "solid_bodies.h"
#include "solid_input.h"
#include "wavefront.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

namespace {

constexpr int exitFaulty = 1;
constexpr int exitBadInput = 2;

struct Arguments {
    std::string land;
    std::string tool;
    std::string output;
    std::string centresFile;
    std::vector<std::tuple<double, double, double>> at;
    bool stats = false;
    bool rough = false;
};

void writeOutput(const std::string& fileName, const std::string& contents) {
    if (!writeWholeFile(fileName, contents))
        throw ToolError("cannot write '" + fileName + "'");
}

std::string textOf(const csgVector& place) {
    std::array<char, 128> text{};
    std::snprintf(text.data(), text.size(), "(%.6g, %.6g, %.6g)", place.x, place.y, place.z);
    return text.data();
}

int showInfo(const Arguments& arguments) {
    Solid loaded;
    loadSolid(loaded, arguments.land);
    const csgMesh& solid = loaded.mesh;
    std::printf("parts            %zu\n", solid.getParts().size());
    for (std::size_t i = 0; i < solid.getParts().size(); ++i)
        std::printf("  part %zu         %zu faces, texture %s\n", i, solid.getParts()[i].size(),
                    loaded.textureNames[i].c_str());
    std::printf("vertices         %zu\n", solid.getVertices().size());
    std::printf("faces            %zu\n", solid.countFaces());
    if (solid.getBounds()) {
        const csgBounds& box = *solid.getBounds();
        std::printf("bounds           (%.9g, %.9g, %.9g) to (%.9g, %.9g, %.9g)\n", box.min.x, box.min.y, box.min.z,
                    box.max.x, box.max.y, box.max.z);
    }
    const std::size_t openEdges = openEdgesOf(solid);
    std::printf("volume           %.12g\n", volumeOf(solid));
    std::printf("area             %.12g\n", areaOf(solid));
    std::printf("open edges       %zu\n", openEdges);
    std::printf("degenerate faces %zu\n", loaded.droppedFaces);
    const bool closed = openEdges == 0 && solid.countFaces() > 0;
    std::printf("closed           %s\n", closed ? "yes" : "no");
    const Bodies bodies = findBodies(solid);
    std::printf("bodies           %zu\n", bodies.count);
    for (const BodyContact& contact : bodies.contacts)
        std::printf("  contact        of bodies %zu and %zu near (%.9g, %.9g, %.9g)\n", contact.first, contact.second,
                    contact.where.x, contact.where.y, contact.where.z);
    return closed ? 0 : exitFaulty;
}

/// What would make craters in a solid go wrong.
int checkSolid(const Arguments& arguments) {
    Solid loaded;
    loadSolid(loaded, arguments.land);
    const csgMesh& solid = loaded.mesh;
    int status = 0;
    const auto say = [&](const std::string& fault) {
        std::printf("%s: %s\n", arguments.land.c_str(), fault.c_str());
        status = exitFaulty;
    };
    if (solid.countFaces() == 0) {
        say("there are no faces");
        return status;
    }
    if (loaded.droppedFaces > 0)
        say(std::to_string(loaded.droppedFaces) + " faces have no area to speak of: join their corners");
    if (const std::size_t openEdges = openEdgesOf(solid); openEdges > 0) {
        say("it is not closed: " + std::to_string(openEdges) +
            " edges have not one face on each side; join corners that belong together, fill holes, drop inner walls");
        return status;
    }
    if (volumeOf(solid) <= 0.0)
        say("it is turned inside out: flip its faces");
    for (const BodyContact& contact : findBodies(solid).contacts) {
        say("bodies " + std::to_string(contact.first) + " and " + std::to_string(contact.second) +
            " touch or overlap near " + textOf(contact.where) +
            ": join them to one, or make them two files of a level");
    }
    return status;
}

std::vector<csgVector> centresOf(const Arguments& arguments) {
    std::vector<csgVector> centres;
    for (const auto& [x, y, z] : arguments.at)
        centres.push_back({x, y, z});
    if (!arguments.centresFile.empty()) {
        const std::vector<csgVector> more = readCentres(arguments.centresFile);
        centres.insert(centres.end(), more.begin(), more.end());
    }
    if (centres.empty())
        throw ToolError("no centre given: use --at X Y Z or --centres FILE");
    for (const csgVector& c : centres) {
        if (!isInReach(c))
            throw ToolError("a centre is out of range");
    }
    return centres;
}

void showCut(std::size_t number, const csgMesh::CarveStats& stats, double milliseconds) {
    std::printf("cut %zu: faces %zu -> %zu, removed %zu, adopted %zu, too small %zu, mended %zu, overruled %zu, "
                "kept uncut %zu, joined %zu, %.2f ms%s\n",
                number, stats.facesBefore, stats.facesAfter, stats.removed, stats.adopted, stats.tooSmall, stats.mended,
                stats.overruled, stats.keptUncut, stats.joined, milliseconds,
                stats.isRepeat ? ", cut here before" : "");
}

void showResult(const csgMesh& land, const JoinedSlivers& slivers) {
    const OpenEdges open = measureOpenEdges(land);
    std::printf("left: faces %zu, volume %.12g, open edges %zu, widest gap %.1e, slivers joined %zu\n",
                land.countFaces(), volumeOf(land), open.count, open.widestGap, slivers.joined);
}

int subtractTools(const Arguments& arguments) {
    const std::vector<csgVector> centres = centresOf(arguments);
    Solid solid;
    loadSolid(solid, arguments.land);
    csgMesh& land = solid.mesh;
    for (std::size_t i = 0; i < centres.size(); ++i) {
        Solid loaded;
        loadSolid(loaded, arguments.tool);
        csgMesh& tool = loaded.mesh;
        tool.translate(centres[i].x, centres[i].y, centres[i].z);
        const auto start = std::chrono::steady_clock::now();
        if (land.canBeCarvedBy(tool))
            land.carve(tool, arguments.rough ? csgMesh::CarveFinish::rough : csgMesh::CarveFinish::closed);
        const std::chrono::duration<double, std::milli> elapsed = std::chrono::steady_clock::now() - start;
        if (arguments.stats)
            showCut(i + 1, land.getCarveStats(), elapsed.count());
    }
    const bool wasClosed = openEdgesOf(land) == 0;
    const JoinedSlivers slivers = joinSlivers(land);
    if (wasClosed && slivers.left > 0)
        throw ToolError(
            "what is left of '" + arguments.land + "' would not be read back closed: " + std::to_string(slivers.left) +
            " faces have no area to speak of, one near " + textOf(*slivers.firstLeft) + "; nothing is written");
    if (arguments.stats)
        showResult(land, slivers);
    writeOutput(arguments.output, writeCsgText(land, solid.textureNames));
    return 0;
}

int exportWavefront(const Arguments& arguments) {
    Solid solid;
    loadSolid(solid, arguments.land);
    writeOutput(arguments.output, writeWavefrontText(solid.mesh, solid.textureNames));
    return 0;
}

int run(int argumentCount, char** values) {
    Arguments arguments;
    CLI::App app("Looks at .csg solids, cuts them and exports them.", "csgtool");
    app.require_subcommand(1);

    CLI::App* const info = app.add_subcommand("info", "Say what a solid holds; status 1 when it is not closed");
    info->add_option("FILE", arguments.land, "solid to look at")->required();

    CLI::App* const check = app.add_subcommand("check", "Name what is wrong with a solid; status 1 when something is");
    check->add_option("FILE", arguments.land, "solid to check")->required();

    CLI::App* const subtract =
        app.add_subcommand("subtract", "Cut a tool out of a solid, once for each centre in turn");
    subtract->add_option("LAND", arguments.land, "solid to cut")->required();
    subtract->add_option("TOOL", arguments.tool, "solid to cut out of it")->required();
    subtract->add_option("--at", arguments.at, "centre X Y Z; may be repeated");
    subtract->add_option("--centres", arguments.centresFile, "file with more centres, cut after those of --at");
    subtract->add_option("-o", arguments.output, "file to write")->required();
    subtract->add_flag("--stats", arguments.stats, "print faces and time of each cut, and what is left open");
    subtract->add_flag("--rough", arguments.rough,
                       "leave the gaps along the rims open, to see what closing them is worth");

    CLI::App* const obj = app.add_subcommand("obj", "Export a solid as a Wavefront file");
    obj->add_option("FILE", arguments.land, "solid to export")->required();
    obj->add_option("-o", arguments.output, "file to write")->required();

    try {
        app.parse(argumentCount, values);
    } catch (const CLI::Success& help) {
        return app.exit(help);
    } catch (const CLI::ParseError& error) {
        if (app.get_subcommands().empty() && argumentCount > 1)
            throw ToolError("'" + std::string(values[1]) + "' is none of info, check, subtract and obj");
        throw ToolError(error.what());
    }
    if (info->parsed())
        return showInfo(arguments);
    if (check->parsed())
        return checkSolid(arguments);
    return subtract->parsed() ? subtractTools(arguments) : exportWavefront(arguments);
}

} // namespace

int main(int argumentCount, char** values) {
    try {
        return run(argumentCount, values);
    } catch (const ToolError& error) {
        std::string line = error.what();
        std::replace(line.begin(), line.end(), '\n', ' ');
        std::fprintf(stderr, "csgtool: %s\n", line.c_str());
        return exitBadInput;
    }
}
