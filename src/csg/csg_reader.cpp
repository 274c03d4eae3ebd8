#include "csg/csg_file.h"

#include "core/file_access.h"

#include <utility>

namespace {

/// Takes the items of a text one by one and says where the first fault is.
class Items {
public:
    Items(std::string text, TextFault& firstFault) : reader(std::move(text)), fault(firstFault) {}

    template <class Value>
    bool read(const char* what, Value& value) {
        if (reader.read(value))
            return true;
        if (reader.isUtf16())
            return refuse(reader.getFault().text);
        return refuse(std::string(what) + (reader.isAtEnd() ? " is missing" : " is no number"));
    }
    bool readReal(const char* what, double& value) {
        if (!read(what, value))
            return false;
        return isCoordinate(value) || refuse(std::string(what) + " is too large");
    }
    bool refuse(const std::string& what) {
        fault = {reader.line(), place + what};
        return false;
    }
    /// What the next items belong to, for a fault.
    void setPlace(const std::string& where) { place = where; }

private:
    TextReader reader;
    TextFault& fault;
    std::string place;
};

bool readCorners(Items& items, csgMeshData::Part& part, const std::string& where) {
    int count = 0;
    items.setPlace(where);
    if (!items.read("vertex count", count))
        return false;
    for (int i = 0; i < count; ++i) {
        items.setPlace(where + "vertex " + std::to_string(i) + ": ");
        csgMeshData::Corner corner;
        if (!items.readReal("x", corner.position.x) || !items.readReal("y", corner.position.y) ||
            !items.readReal("z", corner.position.z) || !items.readReal("u", corner.tex.u) ||
            !items.readReal("v", corner.tex.v))
            return false;
        part.corners.push_back(corner);
    }
    return true;
}

bool readTriangles(Items& items, csgMeshData::Part& part, const std::string& where, std::size_t& total) {
    int count = 0;
    items.setPlace(where);
    if (!items.read("face count", count))
        return false;
    for (int i = 0; i < count; ++i) {
        items.setPlace(where + "face " + std::to_string(i) + ": ");
        csgMeshData::Triangle triangle{};
        for (std::size_t& corner : triangle) {
            int index = 0;
            if (!items.read("index", index))
                return false;
            if (index < 0 || static_cast<std::size_t>(index) >= part.corners.size())
                return items.refuse("index " + std::to_string(index) + " of " + std::to_string(part.corners.size()) +
                                    " vertices");
            corner = static_cast<std::size_t>(index);
        }
        if (++total > csgMostFaces)
            return items.refuse("more than " + std::to_string(csgMostFaces) + " faces");
        part.triangles.push_back(triangle);
    }
    return true;
}

} // namespace

csgReadResult readCsgText(const std::string& text, csgMeshData& data, TextFault& fault) {
    data.parts.clear();
    Items items(text, fault);
    int count = 0;
    if (!items.read("part count", count))
        return csgReadResult::malformed;
    std::size_t faces = 0;
    for (int i = 0; i < count; ++i) {
        const std::string where = "part " + std::to_string(i) + ": ";
        csgMeshData::Part part;
        if (!readCorners(items, part, where) || !readTriangles(items, part, where, faces))
            return csgReadResult::malformed;
        items.setPlace(where);
        if (!items.read("texture name", part.texture))
            return csgReadResult::malformed;
        data.parts.push_back(std::move(part));
    }
    return csgReadResult::ok;
}

csgReadResult readCsgFile(const std::string& fileName, csgMeshData& data, TextFault& fault) {
    std::string text;
    if (!readWholeFile(fileName, text))
        return csgReadResult::cannotOpen;
    return readCsgText(text, data, fault);
}
