#pragma once

// Formatted reads from the text data files: items separated by any white space, line breaks without meaning.
//
// Every read keeps the promise that the file formats rest on: a read that fails leaves its variable as it was. The
// streams of the standard library do not: they store 0 or the nearest limit. As with a stream, once a read has failed
// every later one fails too. Numbers are decimal; a number that is followed at once by other characters is read up to
// them, the rest being the next item; infinities, NaN, values out of range and words longer than `longestName` fail.

#include <string>
#include <string_view>

class TextReader {
public:
    explicit TextReader(std::string fileText) : text(std::move(fileText)) {}

    /// Reads a decimal integer that fits in an int.
    bool read(int& value);
    bool read(double& value);
    bool read(float& value);
    /// Reads a run of characters without white space.
    bool read(std::string& value);

    /// Whether some read has failed.
    bool hasFailed() const { return failed; }
    /// Whether nothing but white space is left.
    bool isAtEnd();
    /// Number of the line, from 1, that the next item starts in: for messages about bad files.
    int line();

private:
    bool startItem();
    template <class Number>
    bool readNumber(Number& value);

    std::string text;
    std::size_t position = 0;
    bool failed = false;
};
