#include "solid_input.h"

#include "core/file_access.h"
#include "core/log.h"
#include "core/text_reader.h"
#include "csg/csg_object.h"

namespace {

constexpr std::string_view solidSuffix = ".csg";

std::string lastFault; // of the loader, which tells the log

void keepFault(const char* text) {
    if (std::string_view(text).starts_with(" csgObject:"))
        lastFault = text;
}

/// Without blanks and line ends around it.
std::string trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \n");
    return first == std::string::npos ? text : text.substr(first, text.find_last_not_of(" \n") - first + 1);
}

} // namespace

void loadSolid(csgObject& solid, const std::string& fileName) {
    if (!fileName.ends_with(solidSuffix))
        throw ToolError("'" + fileName + "' does not end in .csg");
    setLogSink(keepFault);
    const bool loaded = solid.load(fileName.substr(0, fileName.size() - solidSuffix.size()));
    setLogSink(nullptr);
    if (!loaded)
        throw ToolError(trimmed(lastFault));
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
