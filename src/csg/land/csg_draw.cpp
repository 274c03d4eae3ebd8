#include "core/services/module_manager.h"
#include "csg/land/csg_object.h"
#include "render/device/renderer.h"
#include "render/device/texture.h"

#include <array>
#include <cstddef>

namespace {

constexpr int cornersPerFace = 3;

void setMaterial() {
    constexpr std::array<float, 4> ambient{0.5f, 0.5f, 0.5f, 1.0f};
    constexpr std::array<float, 4> diffuse{1.0f, 1.0f, 1.0f, 1.0f};
    constexpr std::array<float, 4> black{0.0f, 0.0f, 0.0f, 1.0f};
    constexpr float shininess = 0.0f;
    glMaterialfv(GL_FRONT, GL_AMBIENT, ambient.data());
    glMaterialfv(GL_FRONT, GL_DIFFUSE, diffuse.data());
    glMaterialfv(GL_FRONT, GL_SPECULAR, black.data());
    glMaterialfv(GL_FRONT, GL_SHININESS, &shininess);
    glMaterialfv(GL_FRONT, GL_EMISSION, black.data());
}

void setClientStates(bool enabled) {
    constexpr std::array<GLenum, 3> arrays{GL_VERTEX_ARRAY, GL_TEXTURE_COORD_ARRAY, GL_NORMAL_ARRAY};
    for (const GLenum state : arrays) {
        if (enabled)
            glEnableClientState(state);
        else
            glDisableClientState(state);
    }
}

void store(double*& target, const csgVector& v) {
    *target++ = v.x;
    *target++ = v.y;
    *target++ = v.z;
}

} // namespace

bool csgObject::hasExtension(const std::string& extension) {
    if (extension.empty() || extension.find(' ') != std::string::npos)
        return false;
    const auto* const all = reinterpret_cast<const char*>(glGetString(GL_EXTENSIONS));
    const std::string text = all != nullptr ? all : "";
    for (std::size_t at = text.find(extension); at != std::string::npos;) {
        const std::size_t end = at + extension.size();
        if ((at == 0 || text[at - 1] == ' ') && (end == text.size() || text[end] == ' '))
            return true;
        at = text.find(extension, end);
    }
    return false;
}

void csgObject::releaseBuffers() {
    for (GLuint* const buffer : {&positionBuffer, &texCoordBuffer, &normalBuffer}) {
        if (bufferSupport && *buffer != 0)
            glDeleteBuffersARB(1, buffer);
        *buffer = 0;
    }
}

void csgObject::releaseArrays() {
    releaseBuffers();
    for (std::vector<double>* const array : {&positionArray, &texCoordArray, &normalArray}) {
        array->clear();
        array->shrink_to_fit();
    }
}

void csgObject::rebuildArrays() {
    // The arrays keep their memory: a landscape is rebuilt at every blast, at nearly the same size.
    releaseBuffers();
    const std::size_t corners = cornersPerFace * countFaces();
    positionArray.resize(3 * corners);
    texCoordArray.resize(2 * corners);
    normalArray.resize(3 * corners);
    double* position = positionArray.data();
    double* texCoord = texCoordArray.data();
    double* normal = normalArray.data();
    for (const csgFaceList& part : getParts()) {
        for (const auto& face : part) {
            for (std::size_t i = 0; i < cornersPerFace; ++i) {
                store(position, face->cornerPosition(i));
                store(normal, face->corners[i]->normal);
                *texCoord++ = face->tex[i].u;
                *texCoord++ = face->tex[i].v;
            }
        }
    }
    if (bufferSupport)
        fillBuffers();
}

void csgObject::fillBuffers() {
    const auto fill = [this](GLuint& buffer, const std::vector<double>& array) {
        glGenBuffersARB(1, &buffer);
        glBindBufferARB(GL_ARRAY_BUFFER_ARB, buffer);
        glBufferDataARB(GL_ARRAY_BUFFER_ARB, static_cast<GLsizeiptrARB>(array.size() * sizeof(double)), array.data(),
                        GL_STATIC_DRAW_ARB);
    };
    fill(positionBuffer, positionArray);
    fill(texCoordBuffer, texCoordArray);
    fill(normalBuffer, normalArray);
    glBindBufferARB(GL_ARRAY_BUFFER_ARB, 0);
}

void csgObject::draw() {
    glPushMatrix();
    glMultMatrixf(transform.data());
    setMaterial();
    const RenderMode mode = theModuleManager->getRenderer()->renderMode;
    if (mode == RenderMode::immediate)
        drawImmediate();
    else if (mode == RenderMode::vertexBuffer && bufferSupport)
        drawBuffers();
    else if (mode == RenderMode::vertexArray)
        drawArrays();
    glPopMatrix();
    SceneNode::draw();
}

void csgObject::drawImmediate() const {
    for (std::size_t i = 0; i < getParts().size(); ++i) {
        if (textures[i] != nullptr)
            textures[i]->bind();
        glBegin(GL_TRIANGLES);
        for (const auto& face : getParts()[i]) {
            for (std::size_t corner = 0; corner < cornersPerFace; ++corner) {
                const csgVector& normal = face->corners[corner]->normal;
                const csgVector& position = face->cornerPosition(corner);
                glNormal3d(normal.x, normal.y, normal.z);
                glTexCoord2d(face->tex[corner].u, face->tex[corner].v);
                glVertex3d(position.x, position.y, position.z);
            }
        }
        glEnd();
    }
}

void csgObject::drawBuffers() const {
    setClientStates(true);
    glBindBufferARB(GL_ARRAY_BUFFER_ARB, positionBuffer);
    glVertexPointer(3, GL_DOUBLE, 0, nullptr);
    glBindBufferARB(GL_ARRAY_BUFFER_ARB, texCoordBuffer);
    glTexCoordPointer(2, GL_DOUBLE, 0, nullptr);
    glBindBufferARB(GL_ARRAY_BUFFER_ARB, normalBuffer);
    glNormalPointer(GL_DOUBLE, 0, nullptr);
    drawParts();
    glBindBufferARB(GL_ARRAY_BUFFER_ARB, 0);
    setClientStates(false);
}

void csgObject::drawArrays() const {
    setClientStates(true);
    glVertexPointer(3, GL_DOUBLE, 0, positionArray.data());
    glTexCoordPointer(2, GL_DOUBLE, 0, texCoordArray.data());
    glNormalPointer(GL_DOUBLE, 0, normalArray.data());
    drawParts();
    setClientStates(false);
}

void csgObject::drawParts() const {
    GLint first = 0;
    for (std::size_t i = 0; i < getParts().size(); ++i) {
        if (textures[i] != nullptr)
            textures[i]->bind();
        const auto count = static_cast<GLsizei>(cornersPerFace * getParts()[i].size());
        glDrawArrays(GL_TRIANGLES, first, count);
        first += count;
    }
}
