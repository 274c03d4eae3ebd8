// The sound library of the headless desktop: it writes down what it is asked to do.

#include "platform/fsound.h"

#include "platform/headless/desktop_internal.h"
#include "platform/headless/gl_internal.h"

#include <array>
#include <filesystem>
#include <fstream>

struct FSOUND_STREAM {
    std::string file;
    unsigned int mode = 0;
    int channel = -1; ///< where it was started last
};

namespace headless {

namespace {

struct Sound {
    std::vector<SoundCall> calls;
    std::map<const FSOUND_STREAM*, std::unique_ptr<FSOUND_STREAM>> streams;
    std::map<int, const FSOUND_STREAM*> playing;
    bool filesRequired = true;
};

Sound& sound() {
    static Sound instance;
    return instance;
}

bool isWave(const char* fileName) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(fileName, error))
        return false;
    std::array<char, 12> head{};
    std::ifstream(fileName, std::ios::binary).read(head.data(), head.size());
    const std::string_view text(head.data(), head.size());
    return text.starts_with("RIFF") && text.ends_with("WAVE");
}

FSOUND_STREAM* find(FSOUND_STREAM* stream, const char* call) {
    if (sound().streams.contains(stream))
        return stream;
    detail::addProblem(std::string(call) + ": there is no such stream");
    return nullptr;
}

void silence(const FSOUND_STREAM* stream) {
    std::erase_if(sound().playing, [=](const auto& entry) { return entry.second == stream; });
}

} // namespace

namespace detail {

void resetSound() {
    sound() = {};
}

std::size_t openStreams() {
    return sound().streams.size();
}

} // namespace detail

const std::vector<SoundCall>& soundCalls() {
    return sound().calls;
}

void clearSoundCalls() {
    std::vector<SoundCall>().swap(sound().calls);
}

std::string playingOn(int channel) {
    const auto found = sound().playing.find(channel);
    return found == sound().playing.end() ? "" : found->second->file;
}

void requireSoundFiles(bool required) {
    sound().filesRequired = required;
}

} // namespace headless

using namespace headless;

signed char FSOUND_Init(int, int, unsigned int) {
    sound().calls.push_back({"FSOUND_Init", "", -1, 0});
    return detail::fails(Call::soundInit) ? 0 : 1;
}

void FSOUND_Close() {
    sound().calls.push_back({"FSOUND_Close", "", -1, 0});
    if (!sound().streams.empty())
        detail::addProblem("FSOUND_Close: a stream is still open");
    sound().playing.clear();
}

FSOUND_STREAM* FSOUND_Stream_Open(const char* fileName, unsigned int mode, int, int) {
    sound().calls.push_back({"FSOUND_Stream_Open", fileName, -1, mode});
    if (detail::fails(Call::soundOpen) || (sound().filesRequired && !isWave(fileName)))
        return nullptr;
    auto stream = std::make_unique<FSOUND_STREAM>(FSOUND_STREAM{fileName, mode, -1});
    FSOUND_STREAM* opened = stream.get();
    sound().streams[opened] = std::move(stream);
    return opened;
}

signed char FSOUND_Stream_Close(FSOUND_STREAM* stream) {
    if (find(stream, "FSOUND_Stream_Close") == nullptr)
        return 0;
    sound().calls.push_back({"FSOUND_Stream_Close", stream->file, -1, stream->mode});
    silence(stream);
    sound().streams.erase(stream);
    return 1;
}

int FSOUND_Stream_Play(int channel, FSOUND_STREAM* stream) {
    if (find(stream, "FSOUND_Stream_Play") == nullptr)
        return -1;
    sound().calls.push_back({"FSOUND_Stream_Play", stream->file, channel, stream->mode});
    if (detail::fails(Call::soundPlay))
        return -1;
    silence(stream);
    stream->channel = channel;
    sound().playing[channel] = stream;
    return channel;
}

signed char FSOUND_Stream_Stop(FSOUND_STREAM* stream) {
    if (find(stream, "FSOUND_Stream_Stop") == nullptr)
        return 0;
    sound().calls.push_back({"FSOUND_Stream_Stop", stream->file, stream->channel, stream->mode});
    silence(stream);
    return 1;
}

signed char FSOUND_Stream_SetMode(FSOUND_STREAM* stream, unsigned int mode) {
    if (find(stream, "FSOUND_Stream_SetMode") == nullptr)
        return 0;
    stream->mode = mode;
    sound().calls.push_back({"FSOUND_Stream_SetMode", stream->file, -1, mode});
    return 1;
}
