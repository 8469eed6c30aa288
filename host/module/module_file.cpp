#include "host/module/module_file.h"

#include <string>

#include "host/module/module_error.h"

namespace flumo::host {

namespace fs = std::filesystem;

void require_file(const fs::path& path) {
    std::error_code ignored;
    const fs::file_status status = fs::status(path, ignored);
    if (fs::is_regular_file(status)) return;
    std::string problem = "no regular file";
    if (!fs::exists(status)) problem = "no such file";
    if (fs::is_directory(status)) problem = "a directory, expected a file";
    throw ModuleError(path.string() + ": " + problem);
}

}  // namespace flumo::host
