// Makes the static meshes. The format is text: the number of groups, then per group its corner records "x y z s t", its
// triangles as three record numbers, and its texture name.

#include "exact_math.h"
#include "vec3.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

struct Corner {
    Vec3 place;
    double s;
    double t;
};

struct Group {
    std::string texture;
    std::vector<Corner> corners;
    std::vector<std::array<int, 3>> triangles;

    /// Corners counter-clockwise seen from outside.
    void quad(const Corner& a, const Corner& b, const Corner& c, const Corner& d) {
        const int first = static_cast<int>(corners.size());
        corners.insert(corners.end(), {a, b, c, d});
        triangles.push_back({first, first + 1, first + 2});
        triangles.push_back({first, first + 2, first + 3});
    }
};

/// A ring of the post: how far up and how wide.
struct Ring {
    double height;
    double radius;
};

/// A round post of planks, its profile listed from the bottom to the top; the last ring is closed by a lid.
Group post(const std::vector<Ring>& profile) {
    constexpr int sides = 12;
    Group group{"planks", {}, {}};
    const auto corner = [](const Ring& ring, int side) {
        const double angle = 2 * pi * side / sides;
        return Corner{{ring.radius * cosine(angle), ring.height, -ring.radius * sine(angle)},
                      2.0 * side / sides,
                      ring.height / 4};
    };
    for (std::size_t i = 0; i + 1 < profile.size(); ++i) {
        for (int side = 0; side < sides; ++side)
            group.quad(corner(profile[i], side), corner(profile[i], side + 1), corner(profile[i + 1], side + 1),
                       corner(profile[i + 1], side));
    }
    const Ring& top = profile.back();
    const int middle = static_cast<int>(group.corners.size());
    group.corners.push_back({{0, top.height, 0}, 0.5, 0.5});
    for (int side = 0; side <= sides; ++side) {
        Corner c = corner(top, side);
        c.s = 0.5 + c.place.x / 4;
        c.t = 0.5 + c.place.z / 4;
        group.corners.push_back(c);
    }
    for (int side = 0; side < sides; ++side)
        group.triangles.push_back({middle, middle + 1 + side, middle + 2 + side});
    return group;
}

/// The stone that the post stands in: a block without a bottom, narrower above.
Group plinth(double below, double above, double height) {
    Group group{"slate", {}, {}};
    const std::array<std::array<double, 2>, 4> around = {{{1, 1}, {1, -1}, {-1, -1}, {-1, 1}}};
    for (std::size_t i = 0; i < 4; ++i) {
        const auto& a = around[i];
        const auto& b = around[(i + 1) % 4];
        group.quad({{below * a[0], 0, below * a[1]}, 0, 0}, {{below * b[0], 0, below * b[1]}, 0.5, 0},
                   {{above * b[0], height, above * b[1]}, 0.5, 0.2}, {{above * a[0], height, above * a[1]}, 0, 0.2});
    }
    group.quad({{-above, height, above}, 0, 0}, {{above, height, above}, 0.5, 0}, {{above, height, -above}, 0.5, 0.5},
               {{-above, height, -above}, 0, 0.5});
    return group;
}

bool writeMesh(const std::filesystem::path& file, const std::vector<Group>& groups) {
    std::ofstream out(file);
    out << groups.size() << '\n';
    for (const Group& group : groups) {
        out << group.corners.size() << '\n';
        for (const Corner& c : group.corners)
            out << c.place.x << ' ' << c.place.y << ' ' << c.place.z << ' ' << c.s << ' ' << c.t << '\n';
        out << group.triangles.size() << '\n';
        for (const auto& t : group.triangles)
            out << t[0] << ' ' << t[1] << ' ' << t[2] << '\n';
        out << group.texture << '\n';
    }
    out.close();
    return static_cast<bool>(out);
}

} // namespace

/// Argument: the directory to write into.
int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    const std::vector<Ring> bollard = {{0.8, 0.95}, {4.4, 0.8}, {4.7, 1.15}, {5.4, 1.2}, {5.8, 0.8}};
    const std::vector<Group> mooring = {post(bollard), plinth(1.9, 1.5, 1.2)};
    return writeMesh(std::filesystem::path(argv[1]) / "mooring.msh", mooring) ? 0 : 1;
}
