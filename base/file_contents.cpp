#include "base/file_contents.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <string_view>
#include <system_error>

#include "base/failure.h"

namespace flumo {
namespace {

// A device or a pipe may never end.
constexpr std::size_t kMostPictureBytes = std::size_t{4} << 30;
constexpr std::size_t kMostTextBytes = std::size_t{64} << 20;

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

Failure cannot_read(const std::filesystem::path& path) {
    return input_failure("cannot read \"" + path.string() + "\": " + std::generic_category().message(errno));
}

File open_file(const std::filesystem::path& path) {
    File file(std::fopen(path.c_str(), "rb"), std::fclose);
    if (!file) throw cannot_read(path);
    return file;
}

// Appends at most `count` bytes and returns how many there were.
template <typename Container>
std::size_t append(std::FILE* file, Container& contents, std::size_t count) {
    const std::size_t before = contents.size();
    contents.resize(before + count);
    const std::size_t got = std::fread(contents.data() + before, 1, count, file);
    contents.resize(before + got);
    return got;
}

template <typename Container>
Container read_all(const std::filesystem::path& path, std::size_t most) {
    constexpr std::size_t kChunk = std::size_t{1} << 20;
    const File file = open_file(path);
    Container contents;
    while (append(file.get(), contents, kChunk) == kChunk) {
        if (contents.size() > most)
            throw input_failure("cannot read \"" + path.string() + "\": it is too large; expected at most " +
                                std::to_string(most / kChunk) + " MiB");
    }
    if (std::ferror(file.get()) != 0) throw cannot_read(path);
    return contents;
}

// Text in these encodings starts with a byte order mark or has a zero byte in each of its first characters.
bool is_utf16_or_utf32(std::string_view text) {
    return text.starts_with("\xff\xfe") || text.starts_with("\xfe\xff") ||
           text.substr(0, 4).find('\0') != std::string_view::npos;
}

}  // namespace

std::vector<uint8_t> read_file(const std::filesystem::path& path) {
    return read_all<std::vector<uint8_t>>(path, kMostPictureBytes);
}

std::vector<uint8_t> read_file_start(const std::filesystem::path& path, std::size_t count) {
    return read_file_part(path, 0, count);
}

std::vector<uint8_t> read_file_part(const std::filesystem::path& path, uint64_t place, std::size_t count) {
    const File file = open_file(path);
    std::vector<uint8_t> contents;
    if (place > 0 && fseeko(file.get(), static_cast<off_t>(place), SEEK_SET) != 0) throw cannot_read(path);
    append(file.get(), contents, count);
    if (std::ferror(file.get()) != 0) throw cannot_read(path);
    return contents;
}

bool file_ends_with(const std::filesystem::path& path, std::string_view end) {
    const uint64_t size = std::filesystem::file_size(path);
    if (size < end.size()) return false;
    const std::vector<uint8_t> last = read_file_part(path, size - end.size(), end.size());
    return std::ranges::equal(last, end, {}, [](uint8_t byte) { return static_cast<char>(byte); });
}

std::string read_text_file(const std::filesystem::path& path) {
    std::string text = read_all<std::string>(path, kMostTextBytes);
    if (is_utf16_or_utf32(text))
        throw input_failure("cannot read \"" + path.string() +
                            "\": it is text in UTF-16 or UTF-32; expected UTF-8");
    if (text.starts_with("\xef\xbb\xbf")) text.erase(0, 3);
    return text;
}

}  // namespace flumo
