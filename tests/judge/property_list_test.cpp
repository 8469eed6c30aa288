// Reading Windows modules as files: what is there, and files that lie.
#include "judge/windows_module/property_list.h"

#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <random>

#include "effect/entry/pipl.h"
#include "host/module/module.h"
#include "judge/windows_module/pe_file.h"
#include "tests/judge/flumo_check.h"
#include "tests/support/scratch_folder.h"

namespace flumo::judge {
namespace {

std::vector<std::byte> flumos_list() {
    constexpr auto kList = ComposePipl();
    const auto* first = reinterpret_cast<const std::byte*>(kList.data());
    return {first, first + kList.size()};
}

/// The least of a 64-bit Windows module: one section that holds exports and a property list.
class TinyImage {
  public:
    TinyImage() : bytes_(0x1000) {
        put(0, 0x5A4D, 2);
        put(0x3C, kHeader, 4);
        put(kHeader, 0x4550, 4);
        put(kHeader + 6, 1, 2);
        put(kHeader + 20, 240, 2);
        put(kHeader + 24, 0x20B, 2);
        put(kTables - 4, 16, 4);
        put(kTables + 240 - 112 + 12, kBase, 4);
        put(kTables + 240 - 112 + 16, 0xC00, 4);
        put(kTables + 240 - 112 + 20, kSection, 4);
        exports({"EffectMain", "PluginDataEntryFunction"});
        resource(flumos_list());
    }

    static constexpr size_t kFirstExport = 0x480;

    const std::vector<std::byte>& bytes() const { return bytes_; }
    void put(size_t at, uint32_t value, size_t width) {
        for (size_t i = 0; i < width; ++i)
            bytes_[at + i] = static_cast<std::byte>(value >> (8 * i));
    }

  private:
    static constexpr size_t kHeader = 0x80;
    static constexpr size_t kTables = kHeader + 24 + 112;
    static constexpr size_t kSection = 0x400;
    static constexpr uint32_t kBase = 0x2000;

    static uint32_t address(size_t at) { return static_cast<uint32_t>(at - kSection) + kBase; }

    void exports(const std::vector<std::string>& names) {
        const size_t table = kSection;
        put(kTables, address(table), 4);
        put(kTables + 4, 40, 4);
        put(table + 24, static_cast<uint32_t>(names.size()), 4);
        put(table + 32, address(table + 40), 4);
        for (size_t i = 0; i < names.size(); ++i) {
            const size_t text = kFirstExport + i * 0x40;
            put(table + 40 + i * 4, address(text), 4);
            std::memcpy(&bytes_[text], names[i].c_str(), names[i].size() + 1);
        }
    }

    /// A folder with one entry, named by `name`, that leads to `next`.
    void folder(size_t at, bool is_named, uint32_t name, uint32_t next) {
        put(at + (is_named ? 12 : 14), 1, 2);
        put(at + 16, name, 4);
        put(at + 20, next, 4);
    }

    void resource(const std::vector<std::byte>& content) {
        constexpr uint32_t kHigh = 0x80000000;
        const size_t root = 0x800;
        put(kTables + 16, address(root), 4);
        put(kTables + 20, 0x400, 4);
        folder(root, true, kHigh | 0x80, kHigh | 0x20);
        folder(root + 0x20, false, 16000, kHigh | 0x40);
        folder(root + 0x40, false, 1033, 0x60);
        put(root + 0x60, address(root + 0xA0), 4);
        put(root + 0x64, static_cast<uint32_t>(content.size()), 4);
        put(root + 0x80, 4, 2);
        for (size_t i = 0; i < 4; ++i)
            put(root + 0x82 + 2 * i, static_cast<uint8_t>("PIPL"[i]), 2);
        std::ranges::copy(content, bytes_.begin() + static_cast<std::ptrdiff_t>(root + 0xA0));
    }

    std::vector<std::byte> bytes_;
};

TEST(PropertyList, OfAWindowsModuleIsJudgedWithItsExports) {
    const flumo::test::ScratchFolder folder;
    const std::string path = folder / "tiny.aex";
    TinyImage image;
    const auto check = [&](std::vector<std::string> words) {
        const std::vector<std::byte>& bytes = image.bytes();
        std::ofstream(path).write(reinterpret_cast<const char*>(bytes.data()), std::ssize(bytes));
        words.push_back(path);
        return test::flumo_check(words).findings();
    };
    EXPECT_EQ(check({FLUMO_MODULE, "--level", "1", "--resource"}), "");
    EXPECT_EQ(check({}), "");
    image.put(TinyImage::kFirstExport, 'X', 1);
    EXPECT_EQ(check({}), "entry.resource: an export EffectMain; none\n");
}

// Whatever a damaged file holds, it is refused with a message or read within its bounds.
TEST(PropertyList, DamageIsRefused) {
    const auto read = [](std::vector<std::byte> bytes) {
        try {
            const PeFile file("damaged", std::move(bytes));
            static_cast<void>(file.exports());
            static_cast<void>(parse_property_list("damaged", file.resource("PIPL", 16000)));
            return true;
        } catch (const host::ModuleError&) {
            return false;
        }
    };
    const std::vector<std::byte> sound = TinyImage().bytes();
    EXPECT_TRUE(read(sound));
    EXPECT_TRUE(PeFile("tiny", sound).resource("PIPL", 16001).empty());
    EXPECT_TRUE(PeFile("tiny", sound).resource("PIPX", 16000).empty());
    for (const size_t size : {0u, 1u, 0x40u, 0x84u, 0x100u, 0x410u, 0x810u, 0x850u, 0x8F0u})
        EXPECT_FALSE(read({sound.begin(), sound.begin() + static_cast<std::ptrdiff_t>(size)})) << size;
    std::mt19937 random(7);
    for (int i = 0; i < 3000; ++i) {
        std::vector<std::byte> bytes = sound;
        for (int flips = 0; flips < 4; ++flips)
            bytes[random() % 0x900] = static_cast<std::byte>(random());
        read(bytes);
    }
}

}  // namespace
}  // namespace flumo::judge
