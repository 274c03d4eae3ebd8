// Makes the landscape solids that the level files place.

#include "land_paint.h"
#include "land_shapes.h"

namespace {

bool writeLand(const std::filesystem::path& directory, const LandShape& shape) {
    const TriangleMesh rough = withoutCrumbs(polygonise(shape.field, shape.box), 200);
    Remesher remesher(rough, shape.field, shape.edgeLength);
    remesher.run(10);
    TriangleMesh mesh = remesher.result();
    quantize(mesh, 1e3);
    return writeSolid(directory / (shape.name + ".csg"), mesh, paintLand(mesh, shape.theme));
}

} // namespace

/// Argument: the directory to write into.
int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    const std::filesystem::path directory = argv[1];
    bool faulty = false;
    for (const LandShape& shape : {moorholm(), archRock(), seaStack(), skerries(), needle(), ringmere(), basaltArch(),
                                   floatingIsle(), fortress(), watchtower()}) {
        if (!writeLand(directory, shape))
            faulty = true;
    }
    return faulty ? 1 : 0;
}
