// Files that are no modules, and the real one loaded again and again.
#include "host/module/module.h"

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <regex>

#include "host/instance.h"

namespace flumo::host::test {
namespace {

using testing::HasSubstr;
using testing::ThrowsMessage;

const std::filesystem::path kModule = FLUMO_MODULE;

TEST(ModuleFile, IsRefusedWithAReason) {
    const std::filesystem::path folder = testing::TempDir();
    const auto text = folder / "not_a_module.so";
    std::ofstream(text) << "plain text";
    const auto cut = folder / "cut.so";
    std::filesystem::copy_file(kModule, cut, std::filesystem::copy_options::overwrite_existing);
    std::filesystem::resize_file(cut, 100000);
    const std::pair<std::filesystem::path, std::string> cases[] = {
        {folder / "missing.so", "no such file"}, {folder, "a directory, expected a file"},
        {"/dev/null", "no regular file"},        {cut, "not a loadable module: the file is cut short"},
        {text, "not a loadable module"},         {NO_ENTRY_MODULE, "has no export EffectMain"},
    };
    for (const auto& row : cases) {
        EXPECT_THAT([&] { const Module module(row.first); },
                    ThrowsMessage<ModuleError>(HasSubstr(row.first.string() + ": " + row.second)));
    }
    std::filesystem::remove(text);
    std::filesystem::remove(cut);
}

// The interface's header is the list: a command or error that is added there is missed here.
TEST(HostErrors, NameEveryCommandAndErrorOfTheInterface) {
    std::ifstream header(INTERFACE_COMMANDS);
    const std::regex constant(R"(constexpr PF_(Cmd|Err) (PF_\w+) = (\d+);)");
    int names = 0;
    for (std::string line; std::getline(header, line);) {
        std::smatch found;
        if (!std::regex_search(line, found, constant)) continue;
        const std::string name = found[2];
        if (name == "PF_Cmd_UNUSED_0" || name == "PF_Cmd_NUM_CMDS" || name == "PF_FIRST_ERR") continue;
        if (name == "PF_Err_NONE") continue;
        const int number = std::stoi(found[3]);
        if (found[1] == "Cmd")
            EXPECT_EQ(command_name(number), name);
        else
            EXPECT_THAT(error_name(number), HasSubstr(name));
        ++names;
    }
    EXPECT_GT(names, 30);
}

TEST(ModuleLife, ASecondLoadGivesTheSamePicture) {
    // The driver stays: what Mesa holds when it is unloaded would be a leak to a leak checker.
    dlopen("libEGL_mesa.so.0", RTLD_NOW | RTLD_NODELETE);
    World first;
    for (int round = 0; round < 3; ++round) {
        {
            const Module module(kModule);
            Host host(module);
            // Set-down and set-up again within one load as well.
            for (int again = 0; again < 2; ++again) {
                host.start();
                const World world = host.new_instance()->render({.width = 36, .height = 17, .frame = 3});
                if (first.width() == 0) first = world;
                EXPECT_TRUE(world.same_picture(first)) << round << " " << again;
                host.global_setdown();
                EXPECT_TRUE(host.accounting().clean()) << host.accounting().describe();
            }
        }
        EXPECT_EQ(dlopen(kModule.c_str(), RTLD_NOW | RTLD_NOLOAD), nullptr)
            << "the module stays in the process";
    }
}

}  // namespace
}  // namespace flumo::host::test
