#pragma once

// Scripts that play the game from inside: coroutines that are resumed at the end of a frame. A script may await another
// script as well as a number of frames or a condition.
//
//     const int status = playGame([&]() -> Script {
//         co_await until([] { return world::activeWorm() != nullptr; });
//     });
//
// WinMain runs whole on the headless desktop; when the script has run to its end the window is closed. A script that
// waits in vain for longer than its limit fails the test and closes the window. Expectations in a script must be
// EXPECT_...: the ASSERT_... ones return, which a coroutine cannot.

#include <coroutine>
#include <functional>
#include <utility>

/// What a script waits for: asked at the end of each frame, it answers true when the script may go on.
struct Wait {
    std::function<bool()> condition;

    bool await_ready() const { return false; }
    template <class Promise>
    void await_suspend(std::coroutine_handle<Promise> waiting) {
        waiting.promise().ready = std::move(condition);
    }
    void await_resume() const {}
};

class Script {
public:
    struct promise_type {
        Script get_return_object() { return Script(std::coroutine_handle<promise_type>::from_promise(*this)); }
        std::suspend_always initial_suspend() noexcept { return {}; }
        std::suspend_always final_suspend() noexcept { return {}; }
        void return_void() {}
        /// Ends the script and fails the test.
        void unhandled_exception();
        std::function<bool()> ready;
    };

    explicit Script(std::coroutine_handle<promise_type> coroutine) : handle(coroutine) {}
    Script(Script&& other) noexcept : handle(std::exchange(other.handle, nullptr)) {}
    Script(const Script&) = delete;
    Script& operator=(const Script&) = delete;
    ~Script() {
        if (handle)
            handle.destroy();
    }

    bool isDone() const { return handle.done(); }
    /// Takes the script as far as it can go at the end of this frame.
    void advance();

private:
    std::coroutine_handle<promise_type> handle;
};

/// Waits until another script has run to its end.
Wait operator co_await(Script part);
/// Waits for this many frames.
Wait frames(unsigned count);
/// Waits until the condition holds at the end of a frame, at most for this many frames.
Wait until(std::function<bool()> condition, unsigned limit = 3000);

/// How a game is played by a script.
struct PlaySettings {
    /// Length of a frame, ms.
    unsigned frameDuration = 16;
    /// Tick at the start; it seeds the game's random stream.
    unsigned startTick = 1000;
    /// Frames after which the game is ended and the test fails.
    unsigned frameLimit = 60000;
    /// Called on the fresh desktop, before the game starts: to order failures, to leave out extensions.
    std::function<void()> prepare = {};
};

/// Resets the desktop, runs WinMain with the script and returns its result.
int playGame(const std::function<Script()>& script, const PlaySettings& settings = {});
