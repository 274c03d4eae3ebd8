#include "platform/sdl/quiet_stderr.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

QuietStderr::QuietStderr() : saved_(dup(STDERR_FILENO)) {
    std::fflush(stderr);
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere < 0)
        return;
    dup2(nowhere, STDERR_FILENO);
    close(nowhere);
}

QuietStderr::~QuietStderr() {
    if (saved_ < 0)
        return;
    dup2(saved_, STDERR_FILENO);
    close(saved_);
}
