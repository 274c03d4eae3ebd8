#include "render/view/billboard.h"

#include "platform/gl.h"
#include "render/device/texture.h"

void beginBillboards(Texture* texture) {
    glPushMatrix();
    glDisable(GL_LIGHTING);
    glDepthMask(GL_FALSE);
    if (texture != nullptr)
        texture->bind();
    glBegin(GL_QUADS);
}

void drawBillboard(const BillboardAxes& axes, const Vector3& centre, float scale,
                   const std::array<Vector2, 4>& textureCoords) {
    const auto& [right, up] = axes;
    const std::array<Vector3, 4> corners = {centre + (right - up) * scale, centre + (right + up) * scale,
                                            centre + (up - right) * scale, centre - (right + up) * scale};
    for (std::size_t i = 0; i < corners.size(); ++i) {
        glTexCoord2f(textureCoords[i].x, textureCoords[i].y);
        glVertex3f(corners[i].x, corners[i].y, corners[i].z);
    }
}

void endBillboards() {
    glEnd();
    glEnable(GL_LIGHTING);
    glDepthMask(GL_TRUE);
    glPopMatrix();
}
