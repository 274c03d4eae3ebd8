#include "platform/fsound.h"
#include "support/require.h"

#include <cstdint>
#include <cstdlib>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

namespace {

/// A file in memory that has a name; the sound calls open files themselves.
class NamedMemory {
public:
    NamedMemory() : descriptor(memfd_create("sound", 0)), name("/proc/self/fd/" + std::to_string(descriptor)) {
        require(descriptor >= 0, "there is memory for a file");
    }
    void fill(const std::uint8_t* data, std::size_t size) const {
        require(ftruncate(descriptor, 0) == 0 && pwrite(descriptor, data, size, 0) == static_cast<ssize_t>(size),
                "the file can be written");
    }
    const char* path() const { return name.c_str(); }

private:
    int descriptor;
    std::string name;
};

void startSilently() {
    setenv("SDL_AUDIODRIVER", "dummy", 1);
    FSOUND_Init(44100, 32, 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const NamedMemory file;
    [[maybe_unused]] static const bool started = (startSilently(), true);
    file.fill(data, size);
    FSOUND_STREAM* const stream = FSOUND_Stream_Open(file.path(), 0x2000, 0, 0);
    const bool explained = *FSOUND_Stream_GetOpenFault() != '\0';
    require((stream == nullptr) == explained, "what is no sound is refused with a reason, and nothing else");
    if (stream == nullptr)
        return 0;
    FSOUND_Stream_SetMode(stream, 0x2000 | FSOUND_LOOP_NORMAL);
    FSOUND_Stream_Play(1, stream);
    FSOUND_Stream_Stop(stream);
    FSOUND_Stream_Close(stream);
    return 0;
}
