#pragma once

// Formatted reads from the text data files: items separated by any white space, line breaks without meaning.
//
// Every read keeps the promise that the file formats rest on: a read that fails leaves its variable as it was. The
// streams of the standard library do not: they store 0 or the nearest limit. As with a stream, once a read has failed
// every later one fails too. Numbers are decimal; a number that is followed at once by other characters is read up to
// them, the rest being the next item; infinities, NaN, values out of range and words longer than `longestName` fail.
// The mark that some editors put before UTF-8 is skipped; of UTF-16 nothing can be read, and the fault says so.

#include <string>

/// What is wrong with a text file, and in which line, from 1; 0 where it is the file as a whole.
struct TextFault {
    int line = 0;
    std::string text;
};

class TextReader {
public:
    explicit TextReader(std::string fileText);

    /// Reads a decimal integer that fits in an int.
    [[nodiscard]] bool read(int& value);
    [[nodiscard]] bool read(double& value);
    [[nodiscard]] bool read(float& value);
    /// Reads a run of characters without white space.
    [[nodiscard]] bool read(std::string& value);

    /// Whether some read has failed.
    bool hasFailed() const { return failed; }
    /// What the first read that failed met, as in: "1,5" is no number.
    const TextFault& getFault() const { return fault; }
    /// Whether the text is UTF-16, and no read succeeds.
    bool isUtf16() const;
    /// Whether nothing but white space is left.
    bool isAtEnd();
    /// Number of the line, from 1, that the next item starts in: for messages about bad files.
    int line();

private:
    bool startItem();
    bool fail(const std::string& what);
    std::string wholeWord() const;
    template <class Number>
    bool readNumber(Number& value);

    std::string text;
    std::size_t position = 0;
    bool failed = false;
    TextFault fault;
};
