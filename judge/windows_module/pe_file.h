// A Windows module as a file: what it exports, and its resources. Nothing is loaded.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace flumo::judge {

/// The file's bytes, read by offset. Throws ModuleError wherever the file contradicts itself.
class PeFile {
  public:
    /// Reads a 64-bit image. Throws ModuleError for anything else.
    explicit PeFile(const std::filesystem::path& path);
    PeFile(std::string name, std::vector<std::byte> bytes);

    /// Names of the exports in the file's order.
    std::vector<std::string> exports() const;
    /// The first resource of this type (upper case text) and number, in any language; empty when there is
    /// none.
    std::vector<std::byte> resource(const std::string& type, uint32_t id) const;

    /// Whether the file starts as Windows modules do.
    static bool looks_like_one(const std::filesystem::path& path);

  private:
    struct Section {
        uint32_t address;
        uint32_t size;
        uint32_t offset;
    };
    /// Place and size in memory of one of the tables that the header names.
    struct Table {
        uint32_t address;
        uint32_t size;
    };

    std::span<const std::byte> bytes_at(size_t offset, size_t size) const;
    uint32_t number(size_t offset, size_t width) const;
    /// Offset in the file of an address in memory.
    size_t offset_of(uint32_t address) const;
    std::string text(size_t offset) const;
    Table table(size_t which) const;
    void read_headers();
    [[noreturn]] void refuse(const std::string& why) const;

    /// The entry of a resource folder that `matches`; 0 when none does.
    template <class Matches>
    uint32_t find_entry(size_t folder, Matches matches) const;
    bool is_named(size_t resources, uint32_t name, const std::string& wanted) const;

    std::string name_;
    std::vector<std::byte> bytes_;
    std::vector<Section> sections_;
    size_t tables_ = 0;
    uint32_t table_count_ = 0;
};

}  // namespace flumo::judge
