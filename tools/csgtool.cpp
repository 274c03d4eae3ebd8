// What a level maker needs to know and do about .csg solids, with the game's own loader and boolean difference.
//
//   csgtool info FILE.csg                                 what is in it; exit status 1 when it is not closed
//   csgtool subtract LAND.csg TOOL.csg --at X Y Z ... [--centres FILE] -o OUT.csg [--stats] [--rough]
//   csgtool obj FILE.csg -o OUT.obj                       for other 3D programs
//
// Exit status 2, one line on stderr and no output file when an argument or a file is bad.

#include "core/module_manager.h"
#include "core/timer.h"
#include "csg/csg_file.h"
#include "csg/csg_measure.h"
#include "csg/csg_object.h"
#include "file_output.h"
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

constexpr int exitNotClosed = 1;
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

/// Faces that the file describes and the loader drops: corners that coincide, or hardly any area.
std::size_t countDroppedFaces(const csgObject& solid, const std::string& fileName) {
    csgMeshData data;
    TextFault fault;
    std::size_t described = 0;
    if (readCsgFile(fileName, data, fault) == csgReadResult::ok) {
        for (const csgMeshData::Part& part : data.parts)
            described += part.triangles.size();
    }
    return described - solid.countFaces();
}

int showInfo(const Arguments& arguments) {
    csgObject solid;
    loadSolid(solid, arguments.land);
    std::printf("parts            %zu\n", solid.getParts().size());
    for (std::size_t i = 0; i < solid.getParts().size(); ++i)
        std::printf("  part %zu         %zu faces, texture %s\n", i, solid.getParts()[i].size(),
                    solid.getTextureNames()[i].c_str());
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
    std::printf("degenerate faces %zu\n", countDroppedFaces(solid, arguments.land));
    const bool closed = openEdges == 0 && solid.countFaces() > 0;
    std::printf("closed           %s\n", closed ? "yes" : "no");
    return closed ? 0 : exitNotClosed;
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
                "kept uncut %zu, %.2f ms\n",
                number, stats.facesBefore, stats.facesAfter, stats.removed, stats.adopted, stats.tooSmall, stats.mended,
                stats.overruled, stats.keptUncut, milliseconds);
}

void showResult(const csgMesh& land) {
    const OpenEdges open = measureOpenEdges(land);
    std::printf("left: faces %zu, volume %.12g, open edges %zu, widest gap %.1e\n", land.countFaces(), volumeOf(land),
                open.count, open.widestGap);
}

int subtractTools(const Arguments& arguments) {
    const std::vector<csgVector> centres = centresOf(arguments);
    csgObject land;
    loadSolid(land, arguments.land);
    for (std::size_t i = 0; i < centres.size(); ++i) {
        csgObject tool;
        loadSolid(tool, arguments.tool);
        tool.translate(centres[i].x, centres[i].y, centres[i].z);
        const auto start = std::chrono::steady_clock::now();
        if (arguments.rough)
            land.carve(tool, csgMesh::CarveFinish::rough);
        else
            land.subtract(tool);
        const std::chrono::duration<double, std::milli> elapsed = std::chrono::steady_clock::now() - start;
        if (arguments.stats)
            showCut(i + 1, land.getCarveStats(), elapsed.count());
    }
    if (arguments.stats)
        showResult(land);
    writeOutput(arguments.output, writeCsgText(land, land.getTextureNames()));
    return 0;
}

int exportWavefront(const Arguments& arguments) {
    csgObject solid;
    loadSolid(solid, arguments.land);
    writeOutput(arguments.output, writeWavefrontText(solid));
    return 0;
}

int run(int argumentCount, char** values) {
    Arguments arguments;
    CLI::App app("Looks at .csg solids, cuts them and exports them.", "csgtool");
    app.require_subcommand(1);

    CLI::App* const info = app.add_subcommand("info", "Say what a solid holds; status 1 when it is not closed");
    info->add_option("FILE", arguments.land, "solid to look at")->required();

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
            throw ToolError("'" + std::string(values[1]) + "' is none of info, subtract and obj");
        throw ToolError(error.what());
    }
    if (info->parsed())
        return showInfo(arguments);
    return subtract->parsed() ? subtractTools(arguments) : exportWavefront(arguments);
}

} // namespace

int main(int argumentCount, char** values) {
    ModuleManager services;
    theModuleManager = &services;
    new Timer; // registers itself; the registry ends it
    try {
        return run(argumentCount, values);
    } catch (const ToolError& error) {
        std::string line = error.what();
        std::replace(line.begin(), line.end(), '\n', ' ');
        std::fprintf(stderr, "csgtool: %s\n", line.c_str());
        return exitBadInput;
    }
}
