#include "launcher/run_game.h"

#include "launcher/launch_error.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <string>

#include <sys/wait.h>
#include <unistd.h>

#ifdef __linux__
#include <sys/prctl.h>
#endif

namespace {

/// The launcher's signals, and those that it was started with.
sigset_t held;
sigset_t before;

/// In the new process: becomes the game, or says why not.
[[noreturn]] void becomeGame(const std::filesystem::path& program, const std::filesystem::path& folder,
                             pid_t launcher) {
    constexpr int exitNotRun = 126;
#ifdef __linux__
    // A launcher that is killed outright takes the game along, which would play on without its data otherwise.
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != launcher)
        _exit(exitNotRun);
#endif
    sigprocmask(SIG_SETMASK, &before, nullptr);
    if (chdir(folder.c_str()) == 0)
        execl(program.c_str(), program.c_str(), static_cast<char*>(nullptr));
    sayNotice(program.string() + " cannot be run in " + folder.string() + ": " + std::strerror(errno));
    _exit(exitNotRun);
}

int statusOf(int ended) {
    if (WIFEXITED(ended))
        return WEXITSTATUS(ended);
    const int signal = WTERMSIG(ended);
    sayNotice(std::string("the game was ended by a signal: ") + strsignal(signal));
    return 128 + signal;
}

} // namespace

void holdSignals() {
    // Ignored, as some start their children, it would let no child be waited for.
    std::signal(SIGCHLD, SIG_DFL);
    sigemptyset(&held);
    for (const int signal : {SIGCHLD, SIGTERM, SIGINT, SIGHUP, SIGQUIT})
        sigaddset(&held, signal);
    sigprocmask(SIG_BLOCK, &held, &before);
}

int runGame(const std::filesystem::path& program, const std::filesystem::path& folder) {
    const pid_t launcher = getpid();
    const pid_t game = fork();
    if (game < 0)
        throw LaunchError(std::string("the game cannot be started: ") + std::strerror(errno), exitFailed);
    if (game == 0)
        becomeGame(program, folder, launcher);
    int ended = 0;
    while (waitpid(game, &ended, WNOHANG) != game) {
        int signal = 0;
        if (sigwait(&held, &signal) == 0 && signal != SIGCHLD)
            kill(game, signal);
    }
    return statusOf(ended);
}
