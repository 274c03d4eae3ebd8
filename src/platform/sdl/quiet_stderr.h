#pragma once

/// Holds stderr back while it lives: drivers that are only tried out write pages there about what is not present.
class QuietStderr {
public:
    QuietStderr();
    QuietStderr(const QuietStderr&) = delete;
    QuietStderr& operator=(const QuietStderr&) = delete;
    ~QuietStderr();

private:
    int saved_;
};
