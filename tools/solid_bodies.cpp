#include "solid_bodies.h"

#include "csg/solid/csg_classify.h"
#include "csg/solid/csg_measure.h"
#include "csg/solid/csg_mesh_data.h"

#include <algorithm>
#include <memory>
#include <unordered_map>

namespace {

using BodyNumbers = std::unordered_map<const csgFace*, std::size_t>;

/// Every face that hangs together with the first one by edges of two faces.
void spread(const csgFace& first, std::size_t number, BodyNumbers& numbers) {
    std::vector<const csgFace*> pending{&first};
    numbers[&first] = number;
    while (!pending.empty()) {
        const csgFace& face = *pending.back();
        pending.pop_back();
        for (std::size_t i = 0; i < 3; ++i) {
            const csgVertex* const end = face.corners[(i + 1) % 3];
            std::vector<const csgFace*> ring;
            for (const csgFace* beside : face.corners[i]->faces) {
                if (std::find(beside->corners.begin(), beside->corners.end(), end) != beside->corners.end())
                    ring.push_back(beside);
            }
            if (ring.size() != 2)
                continue;
            for (const csgFace* beside : ring) {
                if (numbers.try_emplace(beside, number).second)
                    pending.push_back(beside);
            }
        }
    }
}

struct Body {
    csgMeshData data;
    csgMesh mesh;
};

bool cuts(const Body& body, const csgMesh& other) {
    csgMesh copy;
    copy.build(body.data);
    copy.splitAgainst(other);
    return copy.getCarveStats().cuts > 0;
}

/// Of bodies whose surfaces do not cross.
bool liesIn(const csgMesh& inner, const csgMesh& outer) {
    const csgFace& face = *inner.getParts().front()[0];
    return castOwnRay(face, outer.getParts()) == csgStatus::inside;
}

bool areInContact(const Body& a, const Body& b) {
    if (!overlaps(*a.mesh.getBounds(), *b.mesh.getBounds()))
        return false;
    if (cuts(a, b.mesh) || cuts(b, a.mesh))
        return true;
    const bool isCavity = volumeOf(a.mesh) * volumeOf(b.mesh) < 0.0;
    return !isCavity && (liesIn(a.mesh, b.mesh) || liesIn(b.mesh, a.mesh));
}

csgVector middleOfBoth(const csgBounds& a, const csgBounds& b) {
    const auto middle = [](double lowA, double lowB, double highA, double highB) {
        return (std::max(lowA, lowB) + std::min(highA, highB)) / 2.0;
    };
    return {middle(a.min.x, b.min.x, a.max.x, b.max.x), middle(a.min.y, b.min.y, a.max.y, b.max.y),
            middle(a.min.z, b.min.z, a.max.z, b.max.z)};
}

void addFace(csgMeshData& data, const csgFace& face) {
    if (data.parts.empty())
        data.parts.emplace_back();
    csgMeshData::Part& part = data.parts.front();
    const std::size_t first = part.corners.size();
    for (std::size_t i = 0; i < 3; ++i)
        part.corners.push_back({face.cornerPosition(i), {}});
    part.triangles.push_back({first, first + 1, first + 2});
}

} // namespace

Bodies findBodies(const csgMesh& solid) {
    BodyNumbers numbers;
    std::vector<std::unique_ptr<Body>> bodies;
    for (const csgFaceList& part : solid.getParts()) {
        for (const auto& face : part) {
            if (!numbers.contains(face.get())) {
                spread(*face, bodies.size(), numbers);
                bodies.push_back(std::make_unique<Body>());
            }
            addFace(bodies[numbers[face.get()]]->data, *face);
        }
    }
    for (const auto& body : bodies)
        body->mesh.build(body->data);

    Bodies found{bodies.size()};
    const auto add = [&](std::size_t a, std::size_t b, const csgVector& where) {
        const std::size_t first = std::min(a, b) + 1;
        const std::size_t second = std::max(a, b) + 1;
        const auto isKnown = [&](const BodyContact& c) { return c.first == first && c.second == second; };
        if (std::none_of(found.contacts.begin(), found.contacts.end(), isKnown))
            found.contacts.push_back({first, second, where});
    };
    for (const auto& vertex : solid.getVertices()) {
        for (const csgFace* face : vertex->faces) {
            if (numbers[face] != numbers[vertex->faces.front()])
                add(numbers[face], numbers[vertex->faces.front()], vertex->position);
        }
    }
    for (std::size_t a = 0; a < bodies.size(); ++a) {
        for (std::size_t b = a + 1; b < bodies.size(); ++b) {
            if (areInContact(*bodies[a], *bodies[b]))
                add(a, b, middleOfBoth(*bodies[a]->mesh.getBounds(), *bodies[b]->mesh.getBounds()));
        }
    }
    return found;
}
