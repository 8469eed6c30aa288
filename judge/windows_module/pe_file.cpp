#include "judge/windows_module/pe_file.h"

#include <cstring>
#include <fstream>

#include "host/module/module.h"

namespace flumo::judge {

namespace {

// Offsets of the published format.
constexpr size_t kHeaderOffsetAt = 0x3C;
constexpr size_t kFileHeaderSize = 24;
constexpr size_t kSectionCountAt = 6;
constexpr size_t kOptionalSizeAt = 20;
constexpr uint32_t kImage64 = 0x20B;
constexpr size_t kTableCountAt = 108;
constexpr size_t kSectionHeaderSize = 40;
constexpr size_t kExportTable = 0;
constexpr size_t kResourceTable = 2;
constexpr uint32_t kHighBit = 0x80000000;
/// A table with more entries than this is taken as damaged.
constexpr uint32_t kMostEntries = 4096;

std::vector<std::byte> read_file(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(file)), {});
    if (!file) throw host::ModuleError(path.string() + ": cannot be read");
    const auto* first = reinterpret_cast<const std::byte*>(text.data());
    return {first, first + text.size()};
}

}  // namespace

bool PeFile::looks_like_one(const std::filesystem::path& path) {
    char start[2] = {};
    std::ifstream(path, std::ios::binary).read(start, sizeof start);
    return start[0] == 'M' && start[1] == 'Z';
}

PeFile::PeFile(const std::filesystem::path& path) : PeFile(path.string(), read_file(path)) {}

PeFile::PeFile(std::string name, std::vector<std::byte> bytes)
    : name_(std::move(name)), bytes_(std::move(bytes)) {
    read_headers();
}

void PeFile::refuse(const std::string& why) const {
    throw host::ModuleError(name_ + ": " + why);
}

std::span<const std::byte> PeFile::bytes_at(size_t offset, size_t size) const {
    if (offset > bytes_.size() || size > bytes_.size() - offset) refuse("ends too early");
    return std::span(bytes_).subspan(offset, size);
}

uint32_t PeFile::number(size_t offset, size_t width) const {
    uint32_t value = 0;
    size_t shift = 0;
    for (const std::byte b : bytes_at(offset, width)) {
        value |= std::to_integer<uint32_t>(b) << shift;
        shift += 8;
    }
    return value;
}

void PeFile::read_headers() {
    const size_t header = number(kHeaderOffsetAt, 4);
    if (number(header, 4) != 0x4550) refuse("is no Windows module");
    const size_t optional = header + kFileHeaderSize;
    if (number(optional, 2) != kImage64) refuse("is no 64-bit module");
    table_count_ = number(optional + kTableCountAt, 4);
    tables_ = optional + kTableCountAt + 4;
    size_t at = optional + number(header + kOptionalSizeAt, 2);
    for (uint32_t left = number(header + kSectionCountAt, 2); left > 0; --left) {
        sections_.push_back({number(at + 12, 4), number(at + 16, 4), number(at + 20, 4)});
        at += kSectionHeaderSize;
    }
}

size_t PeFile::offset_of(uint32_t address) const {
    for (const Section& section : sections_) {
        if (address >= section.address && address - section.address < section.size) {
            return size_t{section.offset} + (address - section.address);
        }
    }
    refuse("points outside of its sections");
}

std::string PeFile::text(size_t offset) const {
    const auto rest = bytes_at(offset, bytes_.size() - std::min(offset, bytes_.size()));
    const auto* first = reinterpret_cast<const char*>(rest.data());
    return {first, strnlen(first, rest.size())};
}

PeFile::Table PeFile::table(size_t which) const {
    if (which >= table_count_) return {};
    return {number(tables_ + which * 8, 4), number(tables_ + which * 8 + 4, 4)};
}

std::vector<std::string> PeFile::exports() const {
    const Table found = table(kExportTable);
    if (found.size == 0) return {};
    const size_t at = offset_of(found.address);
    const uint32_t count = number(at + 24, 4);
    if (count > kMostEntries) refuse("claims more exports than there can be");
    const size_t names = count > 0 ? offset_of(number(at + 32, 4)) : 0;
    std::vector<std::string> list;
    for (uint32_t i = 0; i < count; ++i)
        list.push_back(text(offset_of(number(names + size_t{i} * 4, 4))));
    return list;
}

template <class Matches>
uint32_t PeFile::find_entry(size_t folder, Matches matches) const {
    const uint32_t count = number(folder + 12, 2) + number(folder + 14, 2);
    if (count > kMostEntries) refuse("claims more resources than there can be");
    for (uint32_t i = 0; i < count; ++i) {
        const size_t entry = folder + 16 + size_t{i} * 8;
        if (matches(number(entry, 4))) return number(entry + 4, 4);
    }
    return 0;
}

bool PeFile::is_named(size_t resources, uint32_t name, const std::string& wanted) const {
    if ((name & kHighBit) == 0) return false;
    const size_t at = resources + (name & ~kHighBit);
    if (number(at, 2) != wanted.size()) return false;
    for (size_t i = 0; i < wanted.size(); ++i) {
        if (number(at + 2 + i * 2, 2) != static_cast<uint8_t>(wanted[i])) return false;
    }
    return true;
}

std::vector<std::byte> PeFile::resource(const std::string& type, uint32_t id) const {
    const Table found = table(kResourceTable);
    if (found.size == 0) return {};
    const size_t resources = offset_of(found.address);
    // Three folders deep: type, number, language.
    const uint32_t numbers =
        find_entry(resources, [&](uint32_t name) { return is_named(resources, name, type); });
    if ((numbers & kHighBit) == 0) return {};
    const uint32_t languages =
        find_entry(resources + (numbers & ~kHighBit), [&](uint32_t name) { return name == id; });
    if ((languages & kHighBit) == 0) return {};
    const uint32_t data = find_entry(resources + (languages & ~kHighBit), [](uint32_t) { return true; });
    const auto bytes = bytes_at(offset_of(number(resources + data, 4)), number(resources + data + 4, 4));
    return {bytes.begin(), bytes.end()};
}

}  // namespace flumo::judge
