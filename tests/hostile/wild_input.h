#pragma once

// What a player without manners does to the desktop: keys, mouse, window messages, and frames of any length.

#include "hostile/bot_random.h"

/// How long frames are: 10 to 40 ms, but 100 to 300 in haste; and unless they have to be ordinary, now and then a burst
/// of 0 ms and up to ten seconds.
enum class Pace { wild, hasty, ordinary };

class WildInput {
public:
    explicit WildInput(BotRandom& stream) : random(stream) {}

    /// Any one thing: a key, the button, the mouse, a message. Escape is left out, it would end the game.
    void causeEvent();
    /// Lets go of all keys and the button.
    void releaseEverything();
    /// Sets the length of the next frame.
    void chooseFrameTime(Pace pace);

    unsigned getMinimisations() const { return minimisations; }
    unsigned getEmptyFrames() const { return emptyFrames; }
    /// Of more than a second.
    unsigned getLongFrames() const { return longFrames; }

private:
    void causeWindowEvent();
    void toggleKey();
    void nudgeMouse(int farthest);
    void resize(int largest);
    void minimise();
    void whileMinimised();

    BotRandom& random;
    /// Frames of no time that are still to come.
    unsigned burst = 0;
    unsigned looksWhileMinimised = 0;
    unsigned minimisations = 0;
    unsigned emptyFrames = 0;
    unsigned longFrames = 0;
};
