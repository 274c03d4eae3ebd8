#include "file_output.h"

#include <filesystem>
#include <fstream>
#include <system_error>

bool writeWholeFile(const std::string& fileName, const std::string& contents) {
    const std::string temporary = fileName + ".tmp";
    std::error_code error;
    {
        std::ofstream file(temporary, std::ios::binary);
        file << contents;
        file.close();
        if (!file) {
            std::filesystem::remove(temporary, error);
            return false;
        }
    }
    std::filesystem::rename(temporary, fileName, error);
    if (!error)
        return true;
    std::filesystem::remove(temporary, error);
    return false;
}
