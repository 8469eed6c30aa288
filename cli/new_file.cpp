#include "cli/new_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
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

// False with errno set. Network file systems may not know RENAME_NOREPLACE: a link refuses as well.
bool rename_to_target(const fs::path& temporary, const fs::path& target, Existing existing) {
    if (existing == Existing::kReplace) return rename(temporary.c_str(), target.c_str()) == 0;
    const char* const from = temporary.c_str();
    if (renameat2(AT_FDCWD, from, AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0) return true;
    return errno == EINVAL && link(from, target.c_str()) == 0 && unlink(from) == 0;
}

Failure cannot_write(const fs::path& target, const std::string& why) {
    return output_failure("cannot write \"" + target.string() + "\": " + why);
}

}  // namespace

NewFile::NewFile(fs::path target, Existing existing)
    : target_(std::move(target)), temporary_(temporary_name(target_)), existing_(existing) {
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
    if (!rename_to_target(temporary_, target_, existing_))
        throw cannot_write(target_, std::generic_category().message(errno));
    committed_ = true;
}

}  // namespace flumo::cli
