// Whole files into memory.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace flumo {

/// All bytes of a file. Throws Failure (unreadable input), naming the file.
std::vector<uint8_t> read_file(const std::filesystem::path& path);

/// The first `count` bytes, fewer where the file is shorter. Throws as read_file.
std::vector<uint8_t> read_file_start(const std::filesystem::path& path, size_t count);

/// The same as text in UTF-8, without a byte order mark. Throws Failure (unreadable input) also for text in
/// UTF-16 or UTF-32.
std::string read_text_file(const std::filesystem::path& path);

}  // namespace flumo
