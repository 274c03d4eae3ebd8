#include "solid_input.h"

#include "core/base/file_access.h"
#include "core/base/text_reader.h"
#include "csg/solid/csg_file.h"

namespace {

constexpr std::string_view solidSuffix = ".csg";

} // namespace

void loadSolid(Solid& solid, const std::string& fileName) {
    if (!fileName.ends_with(solidSuffix))
        throw ToolError("'" + fileName + "' does not end in .csg");
    csgMeshData data;
    TextFault fault;
    switch (readCsgFile(fileName, data, fault)) {
    case csgReadResult::ok:
        break;
    case csgReadResult::cannotOpen:
        throw ToolError("cannot open '" + fileName + "'");
    case csgReadResult::malformed:
        throw ToolError(fileName + ":" + std::to_string(fault.line) + ": " + fault.text);
    }
    solid.mesh.build(data);
    std::size_t described = 0;
    for (const csgMeshData::Part& part : data.parts) {
        solid.textureNames.push_back(part.texture);
        described += part.triangles.size();
    }
    solid.droppedFaces = described - solid.mesh.countFaces();
}

std::vector<csgVector> readCentres(const std::string& fileName) {
    std::string text;
    if (!readWholeFile(fileName, text))
        throw ToolError("cannot read '" + fileName + "'");
    TextReader reader(text);
    std::vector<csgVector> centres;
    while (!reader.isAtEnd()) {
        csgVector centre;
        if (!reader.read(centre.x) || !reader.read(centre.y) || !reader.read(centre.z))
            throw ToolError("'" + fileName + "', line " + std::to_string(reader.line()) +
                            ": a centre is three numbers");
        centres.push_back(centre);
    }
    return centres;
}
