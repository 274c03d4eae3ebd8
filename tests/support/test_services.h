#pragma once

#include "core/services/module_manager.h"

class SceneNode;

/// The registry with every service of the game and an open window on a fresh headless desktop, as after the game's
/// start but without a level. The scene root is an empty node. Ends like the game does.
class TestServices {
public:
    TestServices();
    ~TestServices();
    TestServices(const TestServices&) = delete;
    TestServices& operator=(const TestServices&) = delete;

    /// Moves the clock on and ends a frame, so that the timer's frame time is this long.
    void tick(unsigned milliseconds) const;
    /// One frame of the scene: clock, then update of the root.
    void frame(unsigned milliseconds) const;
    /// Whether a node is still a child of the scene root.
    bool holds(const SceneNode* node) const;
};
