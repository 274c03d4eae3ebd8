#pragma once

/// A rectangle of the screen: pixels, the corner with the smallest coordinates first.
struct Letterbox {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// Largest rectangle in the middle of the screen with the picture's proportions; at least 1 x 1.
Letterbox letterbox(int pictureWidth, int pictureHeight, int screenWidth, int screenHeight);
