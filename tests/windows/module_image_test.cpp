// What a host finds in the finished module before it calls it: exports, imports and the property list.
#include <gmock/gmock.h>

#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <vector>

#include "tests/windows/pe_image.h"
#include "tests/windows/windows_module.h"

namespace flumo::tests {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

constexpr std::size_t kPropertyHead = 16;

struct Property {
    std::string vendor;
    std::string key;
    std::uint32_t id;
    std::string data;
    bool operator==(const Property&) const = default;
};

void PrintTo(const Property& property, std::ostream* out) {
    *out << property.vendor << ' ' << property.key << ' ' << property.id << ' '
         << testing::PrintToString(std::vector<int>(property.data.begin(), property.data.end()));
}

// The resource's bytes, taken from the front. Reading past the end throws std::out_of_range.
class Reader {
  public:
    explicit Reader(std::string bytes) : bytes_(std::move(bytes)) {}

    std::uint32_t number(std::size_t width) {
        std::uint32_t value = 0;
        const std::string digits = text(width);
        for (std::size_t i = width; i-- > 0;)
            value = value << 8 | static_cast<std::uint8_t>(digits[i]);
        return value;
    }

    // Four-character codes are stored as little-endian numbers.
    std::string code() {
        const std::string stored = text(4);
        return {stored.rbegin(), stored.rend()};
    }

    std::string text(std::size_t length) {
        if (length > bytes_.size() - at_) throw std::out_of_range("the resource ends early");
        at_ += length;
        return bytes_.substr(at_ - length, length);
    }

    std::size_t left() const { return bytes_.size() - at_; }

  private:
    std::string bytes_;
    std::size_t at_ = 0;
};

Property read_property(Reader& list) {
    Property property{list.code(), list.code(), list.number(4), {}};
    const std::uint32_t length = list.number(4);
    property.data = list.text(length);
    EXPECT_EQ(list.text((4 - length % 4) % 4), std::string((4 - length % 4) % 4, '\0')) << property.key;
    return property;
}

std::string resource_bytes(HMODULE module) {
    const HRSRC found = FindResourceExA(module, "PIPL", MAKEINTRESOURCEA(16000), 1033);
    if (found == nullptr) throw std::runtime_error("no resource PIPL 16000 in language 1033");
    return {static_cast<const char*>(LockResource(LoadResource(module, found))),
            SizeofResource(module, found)};
}

template <std::size_t kSize>
Property expected(const char* key, const char (&data)[kSize]) {
    return {"8BIM", key, 0, std::string(data, kSize - 1)};
}

TEST(ModuleImage, PropertyListSaysWhoTheEffectIs) {
    const WindowsModule windows;
    const std::string bytes = resource_bytes(windows.handle());
    EXPECT_EQ(bytes.size(), 282U);
    Reader list(bytes);
    EXPECT_EQ(list.number(2), 1U);
    EXPECT_EQ(list.number(4), 0U) << "version of the list";
    EXPECT_EQ(list.number(4), 12U) << "properties";
    std::vector<Property> properties;
    while (list.left() >= kPropertyHead)
        properties.push_back(read_property(list));
    EXPECT_EQ(list.left(), 0U);
    EXPECT_THAT(properties,
                ElementsAre(expected("kind", "TKFe"), expected("name", "\5Flumo\0\0"),
                            expected("catg", "\10Velbrand\0\0\0"), expected("8664", "EffectMain\0\0"),
                            expected("ePVR", "\2\0\0\0"), expected("eSVR", "\15\0\33\0"),
                            expected("eVER", "\0\xA6\x08\0"), expected("eINF", "\0\0"),
                            expected("eGLO", "\x70\x84\0\2"), expected("eGL2", "\0\x14\x80\x08"),
                            expected("eMNA", "\16Velbrand Flumo\0"), expected("aeFL", "\10\0\0\0")));
}

TEST(ModuleImage, ExportsTheTwoEntryPointsOnly) {
    const WindowsModule windows;
    EXPECT_THAT(exported_names(windows.handle()),
                UnorderedElementsAre("EffectMain", "PluginDataEntryFunction"));
}

TEST(ModuleImage, NeedsNoLibraryThatWindowsDoesNotHave) {
    const WindowsModule windows;
    EXPECT_THAT(
        imported_libraries(windows.handle()),
        UnorderedElementsAre("GDI32.DLL", "KERNEL32.DLL", "MSVCRT.DLL", "OPENGL32.DLL", "USER32.DLL"));
}

}  // namespace
}  // namespace flumo::tests
