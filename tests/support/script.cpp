#include "support/script.h"

#include "platform/headless/headless.h"

#include <gtest/gtest.h>

#include <memory>

void Script::promise_type::unhandled_exception() {
    ADD_FAILURE() << "the script came upon something that is not there";
}

void Script::advance() {
    if (handle.done())
        return;
    const std::function<bool()>& ready = handle.promise().ready;
    if (ready && !ready())
        return;
    handle.promise().ready = nullptr;
    handle.resume();
}

Wait operator co_await(Script part) {
    return {[running = std::make_shared<Script>(std::move(part))] {
        running->advance();
        return running->isDone();
    }};
}

Wait frames(unsigned count) {
    return {[left = count]() mutable { return left == 0 || --left == 0; }};
}

Wait until(std::function<bool()> condition, unsigned limit) {
    return {[condition = std::move(condition), left = limit]() mutable {
        if (condition())
            return true;
        if (left-- > 0)
            return false;
        ADD_FAILURE() << "the script waited in vain";
        headless::closeWindow();
        return true;
    }};
}

int playGame(const std::function<Script()>& script, const PlaySettings& settings) {
    headless::reset();
    headless::setTick(settings.startTick);
    headless::setFrameDuration(settings.frameDuration);
    if (settings.prepare)
        settings.prepare();
    Script running = script();
    headless::onFrame([&] {
        running.advance();
        if (running.isDone()) {
            headless::closeWindow();
        } else if (headless::frameCount() >= settings.frameLimit) {
            ADD_FAILURE() << "the game went on for too many frames";
            headless::closeWindow();
        }
    });
    const int result = WinMain(nullptr, nullptr, nullptr, 0);
    headless::onFrame(nullptr);
    return result;
}
