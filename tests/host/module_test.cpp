// Files that are no modules.
#include "host/module.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

namespace flumo::host::test {
namespace {

using testing::HasSubstr;
using testing::ThrowsMessage;

TEST(ModuleFile, IsRefusedWithAReason) {
    const std::filesystem::path folder = testing::TempDir();
    const auto text = folder / "not_a_module.so";
    std::ofstream(text) << "plain text";
    const std::pair<std::filesystem::path, std::string> cases[] = {
        {folder / "missing.so", "no such file"},
        {folder, "no such file"},
        {text, "not a loadable module"},
        {NO_ENTRY_MODULE, "has no export EffectMain"},
    };
    for (const auto& row : cases) {
        EXPECT_THAT([&] { const Module module(row.first); },
                    ThrowsMessage<ModuleError>(HasSubstr(row.first.string() + ": " + row.second)));
    }
    std::filesystem::remove(text);
}

}  // namespace
}  // namespace flumo::host::test
