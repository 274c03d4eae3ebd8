#include "scenes.h"

#include "stage.h"

#include "csg/land/csg_object.h"
#include "csg/solid/csg_divider.h"
#include "platform/gl.h"

#include <fstream>

namespace {

/// A solid with the edges of its faces.
class WiredSolid : public csgObject {
public:
    void draw() override {
        glEnable(GL_POLYGON_OFFSET_FILL);
        glPolygonOffset(1.0f, 1.0f);
        csgObject::draw();
        glDisable(GL_POLYGON_OFFSET_FILL);
        glDisable(GL_LIGHTING);
        glDisable(GL_TEXTURE_2D);
        glColor4f(1.0f, 0.9f, 0.5f, 1.0f);
        for (const csgFaceList& part : getParts()) {
            for (const auto& face : part) {
                glBegin(GL_LINE_LOOP);
                for (std::size_t i = 0; i < 3; ++i) {
                    const csgVector& p = face->cornerPosition(i);
                    glVertex3d(p.x, p.y, p.z);
                }
                glEnd();
            }
        }
        glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
        glEnable(GL_TEXTURE_2D);
        glEnable(GL_LIGHTING);
    }
};

/// A plank of twelve faces, 80 long.
void writePlank(const std::string& path) {
    std::ofstream file(path);
    file << "1\n8\n";
    for (int i = 0; i < 8; ++i) {
        const int x = (i & 1) != 0 ? 40 : -40;
        const int y = (i & 2) != 0 ? 2 : -2;
        const int z = (i & 4) != 0 ? 7 : -7;
        file << x << ' ' << y << ' ' << z << ' ' << 0.05 * x << ' ' << 0.05 * (z + y) << '\n';
    }
    file << "12\n0 2 1 1 2 3 4 5 6 5 7 6 0 1 4 1 5 4 2 6 3 3 6 7 0 4 2 2 4 6 1 3 5 3 7 5\nbasalt\n";
}

} // namespace

void shootCuts(Stage& stage) {
    const std::string path = stage.getDirectory() + "/plank";
    writePlank(path + ".csg");
    WiredSolid plank;
    csgObject tool;
    const auto place = [&](float x) {
        const bool loaded = tool.load("./csg/shotgunsphere");
        tool.translate(x, 2.5, 1.0);
        return loaded;
    };
    if (!plank.load(path) || !place(-6.0f))
        return;
    const auto shoot = [&](const char* name) {
        plank.computeNormals();
        plank.rebuildArrays();
        stage.shoot(plank, Vector3(-2, 26, 28), Vector3(-4, -1, 0), name);
    };
    shoot("cut-1-land");
    csgDivider(plank, *tool.getBounds()).run();
    shoot("cut-2-halved");
    plank.splitAgainst(tool);
    shoot("cut-3-split");
    if (!plank.load(path))
        return;
    plank.carve(tool);
    shoot("cut-4-carved");
    for (int i = 0; i < 12 && place(-34.0f + 6.0f * static_cast<float>(i)); ++i)
        plank.carve(tool);
    shoot("cut-5-twelve-more");
    stage.shoot(plank, Vector3(-7, 10, 8), Vector3(-7, 0, 1), "cut-6-near");
}
