#include "core/data_error.h"

#include "platform/win32.h"

void reportDataError(const std::string& file, const std::string& fault) {
    const std::string text = file + ": " + fault;
    MessageBoxA(nullptr, text.c_str(), "ERROR", MB_OK | MB_ICONSTOP);
}
