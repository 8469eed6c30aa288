#include "cli/new_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>

#include "cli/exit_status.h"

namespace flumo::cli {
namespace {

namespace fs = std::filesystem;

// Hidden, in the same folder (so that the renaming stays within one file system), one per process.
fs::path temporary_name(const fs::path& target) {
    std::string name = ".";
    name += target.filename().string() + "." + std::to_string(getpid()) + ".part";
    return target.parent_path() / name;
}

Failure cannot_write(const fs::path& target, const std::string& why) {
    return output_failure("cannot write \"" + target.string() + "\": " + why);
}

}  // namespace

NewFile::NewFile(fs::path target) : target_(std::move(target)), temporary_(temporary_name(target_)) {
    std::error_code ignored;
    if (fs::is_directory(target_, ignored)) throw cannot_write(target_, "it is a folder");
    const fs::path folder = target_.parent_path();
    if (!folder.empty() && !fs::is_directory(folder, ignored))
        throw cannot_write(target_, "its folder does not exist");
    const int file = open(temporary_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (file < 0) throw cannot_write(target_, std::generic_category().message(errno));
    close(file);
}

NewFile::~NewFile() {
    if (!committed_) unlink(temporary_.c_str());
}

void NewFile::commit() {
    std::error_code error;
    fs::rename(temporary_, target_, error);
    if (error) throw cannot_write(target_, error.message());
    committed_ = true;
}

}  // namespace flumo::cli
