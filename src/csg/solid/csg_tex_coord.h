#pragma once

/// Texture coordinate of one face corner.
struct csgTexCoord {
    double u = 0.0;
    double v = 0.0;

    bool operator==(const csgTexCoord& other) const = default;
};
