#include "csg/csg_file.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>

namespace {

/// Takes the items of a text one by one. After the first fault every further item is refused.
class Items {
public:
    Items(std::string_view source, std::string& faultText) : text(source), fault(faultText) {}

    bool readInteger(const char* what, std::int32_t& value);
    bool readReal(const char* what, double& value);
    bool readName(const char* what, std::string& value);
    bool refuse(const std::string& what) {
        fault = place + what;
        return false;
    }
    /// Where the next items stand, for a fault.
    void setPlace(const std::string& where) { place = where; }

private:
    std::string_view next();
    bool number(const char* what, std::string_view& item);

    std::string_view text;
    std::string& fault;
    std::string place;
};

std::string_view Items::next() {
    constexpr std::string_view blanks = " \t\n\v\f\r";
    const std::size_t begin = std::min(text.find_first_not_of(blanks), text.size());
    text.remove_prefix(begin);
    const std::string_view item = text.substr(0, text.find_first_of(blanks));
    text.remove_prefix(item.size());
    return item;
}

/// The next item, without a leading plus sign, which the conversions below do not know.
bool Items::number(const char* what, std::string_view& item) {
    item = next();
    if (item.empty())
        return refuse(std::string(what) + " is missing");
    if (item.size() > 1 && item[0] == '+' && item[1] != '-')
        item.remove_prefix(1);
    return true;
}

bool Items::readInteger(const char* what, std::int32_t& value) {
    std::string_view item;
    if (!number(what, item))
        return false;
    const auto [end, error] = std::from_chars(item.data(), item.data() + item.size(), value);
    if (error != std::errc{} || end != item.data() + item.size())
        return refuse(std::string(what) + " '" + std::string(item) + "' is not an integer");
    return true;
}

bool Items::readReal(const char* what, double& value) {
    std::string_view item;
    if (!number(what, item))
        return false;
    const auto [end, error] = std::from_chars(item.data(), item.data() + item.size(), value);
    if (error == std::errc::result_out_of_range)
        value =
            std::strtod(std::string(item).c_str(), nullptr); // too small is as good as 0, too large is refused below
    else if (error != std::errc{})
        return refuse(std::string(what) + " '" + std::string(item) + "' is not a number");
    if (end != item.data() + item.size() || !(std::fabs(value) <= csgLargestCoordinate))
        return refuse(std::string(what) + " '" + std::string(item) + "' is not a usable number");
    return true;
}

bool Items::readName(const char* what, std::string& value) {
    value = next();
    return !value.empty() || refuse(std::string(what) + " is missing");
}

bool readCorners(Items& items, csgMeshData::Part& part, const std::string& where) {
    std::int32_t count = 0;
    items.setPlace(where);
    if (!items.readInteger("vertex count", count))
        return false;
    for (std::int32_t i = 0; i < count; ++i) {
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

bool readTriangles(Items& items, csgMeshData::Part& part, const std::string& where) {
    std::int32_t count = 0;
    items.setPlace(where);
    if (!items.readInteger("face count", count))
        return false;
    for (std::int32_t i = 0; i < count; ++i) {
        items.setPlace(where + "face " + std::to_string(i) + ": ");
        csgMeshData::Triangle triangle{};
        for (std::size_t& corner : triangle) {
            std::int32_t index = 0;
            if (!items.readInteger("index", index))
                return false;
            if (index < 0 || static_cast<std::size_t>(index) >= part.corners.size())
                return items.refuse("index " + std::to_string(index) + " of " + std::to_string(part.corners.size()) +
                                    " vertices");
            corner = static_cast<std::size_t>(index);
        }
        part.triangles.push_back(triangle);
    }
    return true;
}

} // namespace

csgReadResult readCsgText(const std::string& text, csgMeshData& data, std::string& fault) {
    data.parts.clear();
    Items items(text, fault);
    std::int32_t count = 0;
    if (!items.readInteger("part count", count))
        return csgReadResult::malformed;
    for (std::int32_t i = 0; i < count; ++i) {
        const std::string where = "part " + std::to_string(i) + ": ";
        csgMeshData::Part part;
        if (!readCorners(items, part, where) || !readTriangles(items, part, where))
            return csgReadResult::malformed;
        items.setPlace(where);
        if (!items.readName("texture name", part.texture))
            return csgReadResult::malformed;
        data.parts.push_back(std::move(part));
    }
    return csgReadResult::ok;
}

csgReadResult readCsgFile(const std::string& fileName, csgMeshData& data, std::string& fault) {
    // A directory opens like a file here and there.
    std::error_code error;
    if (std::filesystem::is_directory(fileName, error))
        return csgReadResult::cannotOpen;
    std::ifstream file(fileName, std::ios::binary);
    if (!file)
        return csgReadResult::cannotOpen;
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    return readCsgText(text, data, fault);
}
