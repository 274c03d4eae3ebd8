#include "core/sound_control.h"

#include "core/log.h"
#include "core/module_manager.h"
#include "platform/fsound.h"

namespace {

constexpr int mixingRate = 44100;
constexpr int softwareChannels = 32;
constexpr unsigned int openMode = 0x2000;
constexpr unsigned int loopingMode = openMode | FSOUND_LOOP_NORMAL;

} // namespace

SoundControl::SoundControl() {
    logLine("Sound Control constructed\n");
    theModuleManager->setSoundControl(this);
    FSOUND_Init(mixingRate, softwareChannels, 0);
}

SoundControl::~SoundControl() {
    while (!streams.empty()) {
        FSOUND_STREAM* const stream = streams.begin()->second;
        FSOUND_Stream_Stop(stream);
        FSOUND_Stream_Close(stream);
        streams.erase(streams.begin());
    }
    FSOUND_Close();
    logLine("Sound Control destructed\n");
}

void SoundControl::play(const char* file, bool loop, int channel) {
    const auto known = streams.find(file);
    if (known != streams.end()) {
        FSOUND_Stream_Play(channel, known->second);
        return;
    }
    FSOUND_STREAM* const stream = FSOUND_Stream_Open(file, openMode, 0, 0);
    if (stream == nullptr)
        return;
    if (loop)
        FSOUND_Stream_SetMode(stream, loopingMode);
    FSOUND_Stream_Play(channel, stream);
    streams.emplace(file, stream);
}

void SoundControl::stop(const char* file) {
    const auto known = streams.find(file);
    if (known != streams.end())
        FSOUND_Stream_Stop(known->second);
}
