#include "support/memory_files.h"

#include "core/base/data_limits.h"
#include "core/base/file_access.h"

#include <map>

namespace {

struct Files {
    std::map<std::string, std::string> byPath;
    std::string ending;
    std::string endingContents;
};

Files& files() {
    static Files instance;
    return instance;
}

const std::string* find(const std::string& path) {
    const auto found = files().byPath.find(path);
    if (found != files().byPath.end())
        return &found->second;
    return !files().ending.empty() && path.ends_with(files().ending) ? &files().endingContents : nullptr;
}

template <class Buffer>
bool readInto(const std::string& path, Buffer& buffer) {
    const std::string* const contents = find(path);
    if (contents == nullptr || contents->size() > largestFile)
        return false;
    buffer.assign(contents->begin(), contents->end());
    // As tight as it gets, so that the address sanitizer sees every step beyond the end.
    buffer.shrink_to_fit();
    return true;
}

} // namespace

namespace memory_files {

void put(const std::string& path, std::string_view contents) {
    files().byPath[path] = contents;
}

void putForEnding(const std::string& ending, std::string_view contents) {
    files().ending = ending;
    files().endingContents = contents;
}

void clear() {
    files() = {};
}

} // namespace memory_files

bool readWholeFile(const std::string& path, std::vector<std::uint8_t>& bytes) {
    return readInto(path, bytes);
}

bool readWholeFile(const std::string& path, std::string& text) {
    return readInto(path, text);
}
