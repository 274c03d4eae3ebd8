// Makes the landscape solids that the level files place.

#include "land_paint.h"
#include "land_shapes.h"

namespace {

bool writeLand(const std::filesystem::path& directory, const LandShape& shape) {
    Remesher remesher(polygonise(shape.field, shape.box), shape.field, shape.edgeLength);
    remesher.run(10);
    TriangleMesh mesh = remesher.result();
    quantize(mesh, 1e3);
    return writeSolid(directory / (shape.name + ".csg"), mesh, paintLand(mesh));
}

} // namespace

/// Argument: the directory to write into.
int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    const std::filesystem::path directory = argv[1];
    for (const LandShape& shape : {moorholm(), archRock(), seaStack()}) {
        if (!writeLand(directory, shape))
            return 1;
    }
    return 0;
}
