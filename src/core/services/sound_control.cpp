#include "core/services/sound_control.h"

#include "core/base/data_error.h"
#include "core/base/expect.h"
#include "core/base/log.h"
#include "core/services/module_manager.h"
#include "platform/fsound.h"

#include <string>

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
    expect(channel >= 0 && channel < softwareChannels);
    const auto known = streams.find(file);
    if (known != streams.end()) {
        FSOUND_Stream_Play(channel, known->second);
        return;
    }
    FSOUND_STREAM* const stream = FSOUND_Stream_Open(file, openMode, 0, 0);
    if (stream == nullptr) {
        const std::string fault = FSOUND_Stream_GetOpenFault();
        if (!fault.empty())
            sayDataFault(file, {0, fault});
        return;
    }
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
