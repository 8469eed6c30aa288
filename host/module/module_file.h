// Whether a path names a file at all, before anything is loaded from it.
#pragma once

#include <filesystem>

namespace flumo::host {

/// Throws ModuleError, naming the path, unless it is a regular file: "no such file", "a directory, expected a
/// file", "no regular file".
void require_file(const std::filesystem::path& path);

}  // namespace flumo::host
