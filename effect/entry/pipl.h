#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "effect/identity/identity.h"

// The property list that a host on Windows reads from the module's resources (type PIPL, id kPiplId) before
// it loads the module. It has the same content as PluginDataEntryFunction and GlobalSetup, from the same
// constants: the host compares version and flags with those of GlobalSetup and refuses an effect where they
// differ.
namespace flumo {

inline constexpr size_t kPiplSize = 282;

// Fills a list of kPiplSize bytes from its start. Numbers are little-endian, and so are four-character codes,
// which are therefore byte-reversed. Every property ends on a multiple of four bytes, counted from its
// start.
class PiplWriter {
  public:
    // What comes before the first property: a fixed 1, the list's version 0, and the number of properties.
    constexpr void Header(uint32_t properties) {
        Append(1, 2);
        Append(0, 4);
        Append(properties, 4);
    }

    // One property: vendor, key, id 0, the length in bytes of `values`, each of which takes `width` bytes.
    template <size_t kCount>
    constexpr void Numbers(std::string_view key, size_t width, const uint32_t (&values)[kCount]) {
        Begin(key, kCount * width);
        for (const uint32_t value : values)
            Append(value, width);
        Pad(kCount * width);
    }

    constexpr void PascalText(std::string_view key, std::string_view text) {
        Begin(key, Padded(text.size() + 1));
        Append(static_cast<uint32_t>(text.size()), 1);
        Characters(text);
        Pad(text.size() + 1);
    }

    constexpr void TerminatedText(std::string_view key, std::string_view text) {
        Begin(key, Padded(text.size() + 1));
        Characters(text);
        Append(0, 1);
        Pad(text.size() + 1);
    }

    static constexpr uint32_t Code(std::string_view four) {
        uint32_t code = 0;
        for (const char c : four)
            code = code << 8 | static_cast<uint8_t>(c);
        return code;
    }

    constexpr size_t Size() const { return size_; }
    constexpr const std::array<uint8_t, kPiplSize>& Bytes() const { return bytes_; }

  private:
    static constexpr size_t Padded(size_t size) { return (size + 3) / 4 * 4; }

    constexpr void Begin(std::string_view key, size_t length) {
        Append(Code("8BIM"), 4);
        Append(Code(key), 4);
        Append(0, 4);
        Append(static_cast<uint32_t>(length), 4);
    }

    constexpr void Append(uint32_t value, size_t width) {
        for (size_t i = 0; i < width; ++i)
            bytes_.at(size_++) = static_cast<uint8_t>(value >> 8 * i);
    }

    constexpr void Characters(std::string_view text) {
        for (const char c : text)
            Append(static_cast<uint8_t>(c), 1);
    }

    constexpr void Pad(size_t size) {
        for (; size % 4 != 0; ++size)
            Append(0, 1);
    }

    std::array<uint8_t, kPiplSize> bytes_{};
    size_t size_ = 0;
};

// The whole list. A change of a text's length that kPiplSize does not follow does not compile.
consteval std::array<uint8_t, kPiplSize> ComposePipl() {
    PiplWriter list;
    list.Header(12);
    list.Numbers("kind", 4, {static_cast<uint32_t>(kPluginKind)});
    list.PascalText("name", kEffectName);
    list.PascalText("catg", kCategory);
    list.TerminatedText("8664", kEntryPoint);
    list.Numbers("ePVR", 2, {2, 0});
    list.Numbers("eSVR", 2, {static_cast<uint32_t>(kApiMajor), static_cast<uint32_t>(kApiMinor)});
    list.Numbers("eVER", 4, {kEffectVersion});
    list.Numbers("eINF", 2, {0});
    list.Numbers("eGLO", 4, {static_cast<uint32_t>(kOutFlags)});
    list.Numbers("eGL2", 4, {static_cast<uint32_t>(kOutFlags2)});
    list.PascalText("eMNA", kMatchName);
    list.Numbers("aeFL", 4, {static_cast<uint32_t>(kReservedInfo)});
    if (list.Size() != kPiplSize) throw "the list's size and kPiplSize differ";
    return list.Bytes();
}

}  // namespace flumo
