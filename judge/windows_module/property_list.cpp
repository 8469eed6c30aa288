#include "judge/windows_module/property_list.h"

#include <algorithm>
#include <fstream>
#include <map>

#include "host/module/module.h"
#include "judge/windows_module/pe_file.h"

namespace flumo::judge {

namespace {

constexpr const char* kResourceType = "PIPL";
constexpr uint32_t kResourceId = 16000;
constexpr size_t kHeaderSize = 10;
constexpr size_t kPropertyHeaderSize = 16;

/// Properties by key. Keys lie byte-reversed in the list.
class Properties {
  public:
    Properties(const std::string& name, std::span<const std::byte> bytes) : name_(name) {
        check(bytes.size() >= kHeaderSize, "is too short for a property list");
        const uint32_t count = number_in(bytes.subspan(6, 4));
        bytes = bytes.subspan(kHeaderSize);
        for (uint32_t i = 0; i < count; ++i)
            bytes = bytes.subspan(take(bytes));
    }

    uint32_t number(const std::string& key) const { return number_in(at(key)); }

    std::string pascal_text(const std::string& key) const {
        const auto data = at(key);
        check(!data.empty() && std::to_integer<size_t>(data[0]) < data.size(),
              "holds a text that is longer than its property: " + key);
        return text_in(data.subspan(1, std::to_integer<size_t>(data[0])));
    }

    std::string terminated_text(const std::string& key) const {
        const auto data = at(key);
        return text_in(data.first(static_cast<size_t>(std::ranges::find(data, std::byte{0}) - data.begin())));
    }

  private:
    /// Gives the property's size.
    size_t take(std::span<const std::byte> bytes) {
        check(bytes.size() >= kPropertyHeaderSize, "ends within a property");
        std::string key = text_in(bytes.subspan(4, 4));
        std::ranges::reverse(key);
        const size_t length = number_in(bytes.subspan(12, 4));
        check(length <= bytes.size() - kPropertyHeaderSize, "ends within property " + key);
        by_key_[key] = bytes.subspan(kPropertyHeaderSize, length);
        const size_t padded = (length + 3) / 4 * 4;
        return std::min(kPropertyHeaderSize + padded, bytes.size());
    }

    std::span<const std::byte> at(const std::string& key) const {
        const auto found = by_key_.find(key);
        check(found != by_key_.end(), "lacks the property " + key);
        return found->second;
    }

    void check(bool holds, const std::string& otherwise) const {
        if (!holds) throw host::ModuleError(name_ + ": " + otherwise);
    }

    static uint32_t number_in(std::span<const std::byte> bytes) {
        uint32_t value = 0;
        for (size_t i = 0; i < std::min<size_t>(bytes.size(), 4); ++i)
            value |= std::to_integer<uint32_t>(bytes[i]) << (8 * i);
        return value;
    }

    static std::string text_in(std::span<const std::byte> bytes) {
        return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
    }

    std::string name_;
    std::map<std::string, std::span<const std::byte>> by_key_;
};

std::vector<std::byte> list_bytes(const std::filesystem::path& path) {
    if (is_windows_module(path)) {
        std::vector<std::byte> bytes = PeFile(path).resource(kResourceType, kResourceId);
        if (bytes.empty()) throw host::ModuleError(path.string() + ": has no resource PIPL 16000");
        return bytes;
    }
    std::ifstream file(path, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(file)), {});
    const auto* first = reinterpret_cast<const std::byte*>(text.data());
    return {first, first + text.size()};
}

}  // namespace

PropertyList parse_property_list(const std::string& name, std::span<const std::byte> bytes) {
    const Properties properties(name, bytes);
    return {.kind = properties.number("kind"),
            .name = properties.pascal_text("name"),
            .category = properties.pascal_text("catg"),
            .match_name = properties.pascal_text("eMNA"),
            .entry_point = properties.terminated_text("8664"),
            .version = properties.number("eVER"),
            .flags = static_cast<int32_t>(properties.number("eGLO")),
            .flags2 = static_cast<int32_t>(properties.number("eGL2"))};
}

PropertyList read_property_list(const std::filesystem::path& path) {
    return parse_property_list(path.string(), list_bytes(path));
}

bool is_windows_module(const std::filesystem::path& path) {
    return PeFile::looks_like_one(path);
}

void judge_exports(CaseContext& context, const std::filesystem::path& module,
                   const std::string& entry_point) {
    const std::vector<std::string> exports = PeFile(module).exports();
    for (const std::string& name : {entry_point, std::string("PluginDataEntryFunction")}) {
        context.expect(std::ranges::find(exports, name) != exports.end(), "an export " + name, "none");
    }
}

}  // namespace flumo::judge
