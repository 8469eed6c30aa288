// Text into a file.
#pragma once

#include <filesystem>
#include <string_view>

namespace flumo::cli {

/// Writes the text, whole or not at all. Throws Failure (unwritable output), naming the file.
void write_text_file(const std::filesystem::path& path, std::string_view text);

}  // namespace flumo::cli
