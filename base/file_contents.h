// Whole files into memory.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace flumo {

/// All bytes of a file. Throws Failure (unreadable input), naming the file.
std::vector<uint8_t> read_file(const std::filesystem::path& path);

/// The first `count` bytes, fewer where the file is shorter. Throws as read_file.
std::vector<uint8_t> read_file_start(const std::filesystem::path& path, std::size_t count);

/// `count` bytes from `place` on, fewer where the file is shorter. Throws as read_file.
std::vector<uint8_t> read_file_part(const std::filesystem::path& path, uint64_t place, std::size_t count);

/// Whether the last bytes of the file are these. Throws as read_file.
bool file_ends_with(const std::filesystem::path& path, std::string_view end);

/// The same as read_file, as text in UTF-8, without a byte order mark. Throws Failure (unreadable input) also
/// for text in UTF-16 or UTF-32.
std::string read_text_file(const std::filesystem::path& path);

}  // namespace flumo
