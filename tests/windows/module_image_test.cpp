// The property list that a host finds in the finished module before it calls it.
#include <gmock/gmock.h>

#include <cstdint>

#include "tests/windows/windows_module.h"

namespace flumo::tests {
namespace {

/// The resource's bytes, taken from the front.
class PropertyList {
  public:
    explicit PropertyList(HMODULE module) {
        const HRSRC found = FindResourceExA(module, "PIPL", MAKEINTRESOURCEA(16000), 1033);
        if (found == nullptr) throw std::runtime_error("no resource PIPL 16000 in language 1033");
        bytes_.assign(static_cast<const char*>(LockResource(LoadResource(module, found))),
                      SizeofResource(module, found));
    }

    /// Throws std::out_of_range at the end of the resource.
    std::string text(std::size_t length) {
        if (length > bytes_.size()) throw std::out_of_range("the resource ends early");
        const std::string taken = bytes_.substr(0, length);
        bytes_.erase(0, length);
        return taken;
    }
    std::uint32_t number(std::size_t width) {
        std::uint32_t value = 0;
        const std::string digits = text(width);
        for (std::size_t i = width; i-- > 0;)
            value = value << 8 | static_cast<std::uint8_t>(digits[i]);
        return value;
    }
    /// Vendor, key, id and data of the next property. Codes are stored as little-endian numbers.
    std::string property() {
        const std::string codes = text(8);
        const std::uint32_t id = number(4), length = number(4);
        const std::string data = text(length), padding = text((4 - length % 4) % 4);
        EXPECT_EQ(padding.find_first_not_of('\0'), std::string::npos) << codes;
        return std::string(codes.rbegin() + 4, codes.rend()) + " " +
               std::string(codes.rbegin(), codes.rbegin() + 4) + " " + std::to_string(id) + " " + data;
    }
    std::size_t left() const { return bytes_.size(); }

  private:
    std::string bytes_;
};

template <std::size_t kSize>
std::string flumos(const char (&key_and_data)[kSize]) {
    std::string property(key_and_data, kSize - 1);
    return "8BIM " + property.insert(4, " 0 ");
}

TEST(ModuleImage, PropertyListSaysWhoTheEffectIs) {
    const WindowsModule windows;
    PropertyList list(windows.handle());
    EXPECT_EQ(list.left(), 282U);
    EXPECT_EQ(list.number(2), 1U);
    EXPECT_EQ(list.number(4), 0U) << "version of the list";
    EXPECT_EQ(list.number(4), 12U) << "properties";
    std::vector<std::string> properties;
    while (list.left() > 0)
        properties.push_back(list.property());
    EXPECT_THAT(properties, testing::ElementsAre(
                                flumos("kindTKFe"), flumos("name\5Flumo\0\0"),
                                flumos("catg\10Velbrand\0\0\0"), flumos("8664EffectMain\0\0"),
                                flumos("ePVR\2\0\0\0"), flumos("eSVR\15\0\33\0"), flumos("eVER\0\xA6\x08\0"),
                                flumos("eINF\0\0"), flumos("eGLO\x70\x84\0\2"), flumos("eGL2\0\x14\x80\x08"),
                                flumos("eMNA\16Velbrand Flumo\0"), flumos("aeFL\10\0\0\0")));
}

}  // namespace
}  // namespace flumo::tests
