// What happens around the program while it writes: signals, full disks, folders that go away.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "base/file_contents.h"
#include "tests/support/program.h"
#include "tests/support/scratch_folder.h"

namespace flumo::cli {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;

flumo::test::Said bash(const std::string& script) {
    return flumo::test::run_program({"bash", "-c", script});
}

// Job control gives the program its own group, so that SIGINT is not ignored as in background jobs.
constexpr const char* kJobControl = "set -m; ";

// The shell's line for 200 small frames into folder/0001.png ...
std::string render_into(const fs::path& folder) {
    return "cd " + folder.string() +
           "; " FLUMO_PROGRAM
           " render --size 64x36 --frames 1-200 --set NoiseVisible=off --set LinesVisible=on "
           "--skip-existing -o '####.png' --quiet & pid=$!; ";
}

std::string wait_for(const std::string& file) {
    return "while [ ! -e " + file + " ] && kill -0 $pid; do sleep 0.01; done; ";
}

TEST(Hostile, StoppedAndResumedEqualsUninterrupted) {
    const flumo::test::ScratchFolder folder;
    for (const char* name : {"whole", "INT", "TERM", "HUP", "KILL"})
        fs::create_directory(folder / name);
    ASSERT_EQ(bash(render_into(folder / "whole") + "wait $pid").status, 0);
    for (const auto& [signal, status] :
         {std::pair("INT", 130), std::pair("TERM", 143), std::pair("HUP", 143), std::pair("KILL", 137)}) {
        const fs::path out = folder / signal;
        const flumo::test::Said stopped = bash(kJobControl + render_into(out) + wait_for("0020.png") +
                                               "kill -" + signal + " $pid; wait $pid");
        ASSERT_EQ(stopped.status, status) << stopped.errors;
        ASSERT_FALSE(fs::exists(out / "0200.png")) << "stopped too late to show anything";
        for (const auto& entry : fs::directory_iterator(out)) {
            const std::string name = entry.path().filename();
            if (name.starts_with('.') && status == 137) continue;
            EXPECT_EQ(read_file(entry.path()), read_file(folder / "whole" / name)) << signal << name;
        }
        EXPECT_THAT(stopped.errors, HasSubstr(status == 137 ? "" : "of 200 frames"));
        ASSERT_EQ(bash(render_into(out) + "wait $pid").status, 0);
        EXPECT_EQ(bash("diff -r " + (folder / "whole").string() + " " + out.string()).output, "");
    }
}

// While inputs are read a signal ends the program, which would otherwise wait for a FIFO without a writer.
TEST(Hostile, ASignalEndsAReadThatWaits) {
    const flumo::test::ScratchFolder folder;
    const std::string fifo = folder / "fifo";
    ASSERT_EQ(bash("mkfifo " + fifo).status, 0);
    for (const std::string& read : {"render --scene " + fifo + " -o " + (folder / "a.png").string(),
                                    "panel Gradient --script " + fifo}) {
        const flumo::test::Said said =
            bash(kJobControl + std::string(FLUMO_PROGRAM " ") + read +
                 " & pid=$!; sleep 1; kill -INT $pid; (sleep 20; kill -KILL $pid) & wait $pid");
        EXPECT_EQ(said.status, 130) << read;
    }
    EXPECT_EQ(folder.file_count(), 1u);
}

// Where nothing fits: a line that names the file, status 5, and not even a hidden file left. Small files fail
// only when they are closed.
TEST(Hostile, AFullDiskLeavesNothingHalfWritten) {
    const struct {
        const char* shell;
        const char* place;
        const char* size;
        const char* left;
    } cases[] = {
        {"bash", "ulimit -f 4", "320x180", "script\n"},
        {"unshare -rm bash", "mount -t tmpfs -o size=64k none . && cd $PWD && ! head -c 1M /dev/zero > full",
         "16x9", "full\n"},
    };
    const bool may_mount = bash("unshare -rm mount -t tmpfs none /mnt").status == 0;
    for (const auto& row : cases) {
        if (std::string_view(row.shell) != "bash" && !may_mount)
            GTEST_SKIP() << "no right to mount a small disk";
        for (const char* output : {"a.png", "a.exr", "a.mov", "a.mkv", "a.gif"}) {
            const flumo::test::ScratchFolder folder;
            const std::string script = folder / "script";
            std::ofstream(script) << "cd " << folder.path().string() << " && " << row.place
                                  << " 2> /dev/null && { " FLUMO_PROGRAM " render --depth 16 -q --size "
                                  << row.size << " -o " << output << "; echo $?; ls -A; }";
            const flumo::test::Said said = bash(std::string(row.shell) + " " + script);
            EXPECT_EQ(said.output, std::string("5\n") + row.left) << row.place << output;
            EXPECT_TRUE(flumo::test::is_one_line(said.errors)) << said.errors;
            EXPECT_THAT(said.errors, StartsWith(std::string("flumo: cannot write \"") + output + "\": "));
        }
    }
}

TEST(Hostile, StandardOutputThatIsFullIsAnError) {
    const flumo::test::ScratchFolder folder;
    const std::string render = "render --size 64x36 --frames 1-3 ";
    for (const std::string& command : {std::string("controls"), render + "-o -",
                                       render + "--progress json -o '" + (folder / "#.png").string() + "'"}) {
        const flumo::test::Said said = bash(FLUMO_PROGRAM " " + command + " > /dev/full");
        EXPECT_EQ(said.status, 5) << command;
        EXPECT_TRUE(flumo::test::is_one_line(said.errors)) << said.errors;
    }
}

TEST(Hostile, AFolderThatGoesAwayEndsTheRun) {
    const flumo::test::ScratchFolder folder;
    fs::create_directory(folder / "out");
    // Renamed in one step, since a folder cannot be removed while files are written into it.
    const flumo::test::Said said =
        bash("cd " + folder.path().string() +
             "; " FLUMO_PROGRAM " render --size 64x36 --frames 1-200 -o 'out/####.png' --quiet & pid=$!; " +
             wait_for("out/0005.png") + "mv out gone; wait $pid; status=$?; rm -r gone; exit $status");
    EXPECT_EQ(said.status, 5) << said.errors;
    EXPECT_TRUE(flumo::test::is_one_line(said.errors)) << said.errors;
    EXPECT_EQ(folder.file_count(), 0u);
}

}  // namespace
}  // namespace flumo::cli
