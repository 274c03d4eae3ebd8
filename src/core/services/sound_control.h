#pragma once

// Plays music and effects by file path. A file is opened at its first successful `play` and stays open; whether it
// loops is fixed then. The caller's string is kept by its pointer and must live for the whole run: sounds are named by
// constants.

#include <cstring>
#include <map>

struct FSOUND_STREAM;

class SoundControl {
public:
    /// Registers itself and starts the mixer.
    SoundControl();
    /// Stops and closes every stream in the order of their names, then the mixer.
    ~SoundControl();
    SoundControl(const SoundControl&) = delete;
    SoundControl& operator=(const SoundControl&) = delete;

    /// Plays a file from its beginning on a numbered channel; a file that cannot be opened is not played, and is tried
    /// again the next time.
    void play(const char* file, bool loop, int channel);
    /// Ends a file's playing, if it was ever played.
    void stop(const char* file);

private:
    struct ByContent {
        bool operator()(const char* a, const char* b) const { return std::strcmp(a, b) < 0; }
    };

    std::map<const char*, FSOUND_STREAM*, ByContent> streams;
};
