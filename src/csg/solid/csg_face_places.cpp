#include "csg/solid/csg_face_places.h"

#include <utility>

csgFace& csgFacePlaces::append(csgFaceList& list, const std::array<csgVertex*, 3>& corners,
                               const std::array<csgTexCoord, 3>& tex) {
    auto face = std::make_unique<csgFace>(*corners[0], *corners[1], *corners[2]);
    face->tex = tex;
    list.append(std::move(face));
    add(list, list.size() - 1);
    return *list.last();
}

std::unique_ptr<csgFace> csgFacePlaces::take(const csgFace& face) {
    const Place place = places.at(&face);
    places.erase(&face);
    return place.list->take(place.index);
}
