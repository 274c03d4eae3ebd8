// The sound calls on SDL2_mixer. A stream is a whole decoded file; its loops are the mixer's, which have no gap.

#include "platform/fsound.h"

#include "platform/sdl/quiet_stderr.h"
#include "platform/sdl/sound_device.h"
#include "platform/sdl/volume.h"
#include "platform/sdl/wave_sound.h"

#include <SDL.h>
#include <SDL_mixer.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <vector>

struct FreeChunk {
    void operator()(Mix_Chunk* chunk) const { Mix_FreeChunk(chunk); }
};

struct FSOUND_STREAM {
    std::string fileName;
    std::vector<std::uint8_t> samples;           ///< empty while it was never played with a sound device there
    std::unique_ptr<Mix_Chunk, FreeChunk> chunk; ///< of the samples
    bool looping = false;
    int channel = -1; ///< where it was started last
};

namespace {

/// Samples per block handed to the device: 23 ms at 44100 Hz, short enough to seem immediate.
constexpr int blockSize = 1024;
/// Bytes; ten minutes of 16 bits at 48000 Hz fit.
constexpr std::uintmax_t largestSoundFile = std::uintmax_t{128} << 20;

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds timeBetweenTries{1};

bool mixerOpen = false;
/// What the mixer was opened with.
int openRate = 0;
int openChannels = 0;
/// It was open, and its device went away.
bool deviceLost = false;
Clock::time_point nextTry;
/// Why the last file was refused.
std::string openFault;
/// Which stream a channel was given last; a stream that is stopped must not silence its successor.
std::map<int, FSOUND_STREAM*> channelOwner;

bool owns(const FSOUND_STREAM* stream) {
    const auto found = channelOwner.find(stream->channel);
    return found != channelOwner.end() && found->second == stream;
}

void halt(FSOUND_STREAM* stream) {
    if (stream->channel < 0 || !owns(stream))
        return;
    if (mixerOpen)
        Mix_HaltChannel(stream->channel);
    channelOwner.erase(stream->channel);
}

/// In this very format on every device: the sounds are decoded for it, and stay when the device changes.
bool openMixer() {
    const QuietStderr quiet;
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0)
        return false;
    if (Mix_OpenAudioDevice(openRate, AUDIO_S16SYS, 2, blockSize, nullptr, 0) != 0) {
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
        return false;
    }
    mixerOpen = true;
    Mix_AllocateChannels(openChannels);
    applyVolumes();
    return true;
}

void closeMixer() {
    if (!mixerOpen)
        return;
    Mix_CloseAudio();
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
    mixerOpen = false;
}

bool isFile(const char* fileName) {
    std::error_code error;
    return std::filesystem::is_regular_file(fileName, error);
}

/// The bytes of a file of at most the largest size; fewer when it cannot be read.
std::vector<std::uint8_t> contentsOf(const char* fileName, std::uintmax_t size) {
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size));
    std::ifstream file(fileName, std::ios::binary);
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return bytes;
}

WaveSound decode(const char* fileName) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(fileName, error);
    if (error)
        return {{}, "cannot be read"};
    if (size > largestSoundFile)
        return {{}, "larger than " + std::to_string(largestSoundFile >> 20) + " MB"};
    return decodeWave(contentsOf(fileName, size), openRate);
}

/// Decodes a stream's file; says whether it is a sound, and remembers why not.
bool decodeInto(FSOUND_STREAM& stream) {
    WaveSound sound = decode(stream.fileName.c_str());
    openFault = sound.fault;
    if (!sound.fault.empty())
        return false;
    stream.samples = std::move(sound.samples);
    stream.chunk.reset(Mix_QuickLoad_RAW(stream.samples.data(), static_cast<Uint32>(stream.samples.size())));
    return stream.chunk != nullptr;
}

/// Lets the mixer play a stream on its channel; without a device it succeeds in silence.
bool sound(FSOUND_STREAM& stream) {
    if (!mixerOpen)
        return true;
    if (!stream.chunk && !decodeInto(stream))
        return true;
    // A channel that plays is cut off by the mixer itself.
    return Mix_PlayChannel(stream.channel, stream.chunk.get(), stream.looping ? -1 : 0) >= 0;
}

} // namespace

void loseSoundDevice() {
    if (!mixerOpen)
        return;
    closeMixer();
    deviceLost = true;
    nextTry = Clock::now();
}

void pauseSound() {
    if (mixerOpen)
        Mix_Pause(-1);
}

void resumeSound() {
    if (mixerOpen)
        Mix_Resume(-1);
}

void regainSoundDevice() {
    if (!deviceLost || Clock::now() < nextTry)
        return;
    nextTry = Clock::now() + timeBetweenTries;
    deviceLost = !openMixer();
    if (deviceLost)
        return;
    for (const auto& [channel, stream] : channelOwner)
        if (stream->looping)
            sound(*stream);
}

signed char FSOUND_Init(int mixRate, int maxSoftwareChannels, unsigned int) {
    openRate = mixRate;
    openChannels = maxSoftwareChannels;
    if (!openMixer())
        std::cerr << "brackenmoor: no sound: " << SDL_GetError() << '\n';
    return 1;
}

void FSOUND_Close() {
    channelOwner.clear();
    closeMixer();
    deviceLost = false;
}

FSOUND_STREAM* FSOUND_Stream_Open(const char* fileName, unsigned int mode, int, int) {
    openFault.clear();
    if (!isFile(fileName))
        return nullptr;
    auto stream = std::make_unique<FSOUND_STREAM>();
    stream->fileName = fileName;
    stream->looping = (mode & FSOUND_LOOP_NORMAL) != 0;
    return !mixerOpen || decodeInto(*stream) ? stream.release() : nullptr;
}

const char* FSOUND_Stream_GetOpenFault() {
    return openFault.c_str();
}

signed char FSOUND_Stream_Close(FSOUND_STREAM* stream) {
    if (stream == nullptr)
        return 0;
    halt(stream);
    delete stream;
    return 1;
}

int FSOUND_Stream_Play(int channel, FSOUND_STREAM* stream) {
    if (stream == nullptr)
        return -1;
    halt(stream);
    stream->channel = channel;
    channelOwner[channel] = stream;
    return sound(*stream) ? channel : -1;
}

signed char FSOUND_Stream_Stop(FSOUND_STREAM* stream) {
    if (stream == nullptr)
        return 0;
    halt(stream);
    return 1;
}

signed char FSOUND_Stream_SetMode(FSOUND_STREAM* stream, unsigned int mode) {
    if (stream == nullptr)
        return 0;
    stream->looping = (mode & FSOUND_LOOP_NORMAL) != 0;
    return 1;
}
