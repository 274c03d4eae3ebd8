#include "csg/solid/csg_file.h"

#include "core/base/file_access.h"

#include <algorithm>
#include <functional>
#include <unordered_map>
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

/// Counts the faces round each place, whatever part they are of.
class Hubs {
public:
    /// False when the face is one too many at a place. Faces with two corners at one place are never built.
    bool add(const csgMeshData::Part& part, const csgMeshData::Triangle& t) {
        const auto& [i, j, k] = t;
        const csgVector& a = part.corners[i].position;
        const csgVector& b = part.corners[j].position;
        const csgVector& c = part.corners[k].position;
        if (a.coincides(b) || b.coincides(c) || c.coincides(a))
            return true;
        const std::size_t most = std::max({++counts[a], ++counts[b], ++counts[c]});
        return most <= csgMostFacesAtCorner;
    }

private:
    struct HashOfPlace {
        std::size_t operator()(const csgVector& p) const {
            const std::hash<double> hash;
            return (hash(p.x) * 31 + hash(p.y)) * 31 + hash(p.z);
        }
    };
    std::unordered_map<csgVector, std::size_t, HashOfPlace> counts;
};

bool readTriangles(Items& items, csgMeshData::Part& part, const std::string& where, std::size_t& total, Hubs& hubs) {
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
        if (!hubs.add(part, triangle))
            return items.refuse("more than " + std::to_string(csgMostFacesAtCorner) + " faces have a corner in common");
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
    Hubs hubs;
    for (int i = 0; i < count; ++i) {
        const std::string where = "part " + std::to_string(i) + ": ";
        csgMeshData::Part part;
        if (!readCorners(items, part, where) || !readTriangles(items, part, where, faces, hubs))
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
