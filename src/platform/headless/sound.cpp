// The sound library of the headless desktop: it writes down what it is asked to do.

#include "platform/headless/desktop_internal.h"

#include <filesystem>
#include <fstream>

using namespace headless;
using namespace headless::detail;

namespace {

bool isFile(const char* fileName) {
    std::error_code error;
    return std::filesystem::is_regular_file(fileName, error);
}

bool isWave(const char* fileName) {
    std::array<char, 12> head{};
    std::ifstream(fileName, std::ios::binary).read(head.data(), head.size());
    const std::string_view text(head.data(), head.size());
    return text.starts_with("RIFF") && text.ends_with("WAVE");
}

/// Writes the call down; null for a stream that is not open.
Stream* use(FSOUND_STREAM* handle, const char* call, int channel = -1) {
    Stream* const stream = find(desktop().streams, handle, call);
    if (stream != nullptr)
        desktop().soundCalls.push_back({call, stream->file, channel, stream->mode});
    return stream;
}

} // namespace

std::string headless::playingOn(int channel) {
    for (const auto& [handle, stream] : desktop().streams)
        if (stream.channel == channel)
            return stream.file;
    return "";
}

signed char FSOUND_Init(int, int, unsigned int) {
    desktop().soundCalls.push_back({"FSOUND_Init", ""});
    return 1;
}

void FSOUND_Close() {
    desktop().soundCalls.push_back({"FSOUND_Close", ""});
    if (!desktop().streams.empty())
        addProblem("FSOUND_Close: a stream is still open");
}

FSOUND_STREAM* FSOUND_Stream_Open(const char* fileName, unsigned int mode, int, int) {
    desktop().soundCalls.push_back({"FSOUND_Stream_Open", fileName, -1, mode});
    desktop().openFault = isFile(fileName) && !isWave(fileName) ? "not a WAV file" : "";
    if (!isWave(fileName))
        return nullptr;
    return desktop().streams.emplace(newHandle<FSOUND_STREAM*>(), Stream{fileName, mode}).first->first;
}

const char* FSOUND_Stream_GetOpenFault() {
    return desktop().openFault.c_str();
}

signed char FSOUND_Stream_Close(FSOUND_STREAM* stream) {
    if (use(stream, "FSOUND_Stream_Close") == nullptr)
        return 0;
    desktop().streams.erase(stream);
    return 1;
}

int FSOUND_Stream_Play(int channel, FSOUND_STREAM* stream) {
    Stream* const started = use(stream, "FSOUND_Stream_Play", channel);
    if (started == nullptr)
        return -1;
    for (auto& [handle, other] : desktop().streams)
        if (other.channel == channel)
            other.channel = -1;
    return started->channel = channel;
}

signed char FSOUND_Stream_Stop(FSOUND_STREAM* stream) {
    Stream* const stopped = use(stream, "FSOUND_Stream_Stop");
    if (stopped == nullptr)
        return 0;
    stopped->channel = -1;
    return 1;
}

signed char FSOUND_Stream_SetMode(FSOUND_STREAM* stream, unsigned int mode) {
    Stream* const changed = use(stream, "FSOUND_Stream_SetMode");
    if (changed == nullptr)
        return 0;
    changed->mode = desktop().soundCalls.back().mode = mode;
    return 1;
}
