#include "file_output.h"

#include <cstdio>
#include <filesystem>
#include <system_error>

#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

/// Where a name leads; a link to nothing leads to what it names.
fs::path followed(fs::path path) {
    constexpr int mostLinks = 40;
    std::error_code error;
    for (int i = 0; i < mostLinks && fs::is_symlink(fs::symlink_status(path, error)); ++i)
        path = path.parent_path() / fs::read_symlink(path, error);
    return path;
}

/// Opens by a mode of fopen, writes and closes.
bool writeInto(const fs::path& path, const char* mode, const std::string& contents) {
    std::FILE* const file = std::fopen(path.c_str(), mode);
    if (file == nullptr)
        return false;
    const bool written = std::fwrite(contents.data(), 1, contents.size(), file) == contents.size();
    return std::fclose(file) == 0 && written;
}

/// A name beside the file, of this process alone.
fs::path nameBeside(const fs::path& path) {
    fs::path name = path;
    return name += ".tmp" + std::to_string(getpid());
}

} // namespace

bool writeWholeFile(const std::string& fileName, const std::string& contents) {
    const fs::path path = followed(fileName);
    struct stat old {};
    const bool replaces = stat(path.c_str(), &old) == 0;
    if (replaces && !S_ISREG(old.st_mode))
        return writeInto(path, "wb", contents);

    const fs::path temporary = nameBeside(path);
    std::error_code error;
    if (fs::exists(fs::symlink_status(temporary, error)))
        return false;
    // "x" refuses what has come there since.
    bool good = writeInto(temporary, "wbx", contents);
    if (good && replaces) {
        // Only root can give a file away; whoever else may write here gets a file of their own.
        [[maybe_unused]] const int given = chown(temporary.c_str(), old.st_uid, old.st_gid);
        good = chmod(temporary.c_str(), old.st_mode & 07777) == 0;
    }
    if (good)
        fs::rename(temporary, path, error);
    if (good && !error)
        return true;
    fs::remove(temporary, error);
    return false;
}
