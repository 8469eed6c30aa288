#include "media/new_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>
#include <system_error>

#include "base/failure.h"

namespace flumo::media {
namespace {

namespace fs = std::filesystem;

// Hidden, and in the same folder, so that the renaming stays within one file system.
fs::path temporary_name(const fs::path& target, const std::string& mark) {
    std::string name = ".";
    name += mark + target.filename().string() + ".part";
    return target.parent_path() / name;
}

// Whether the file is ours alone: locked, and not renamed by its writer since it was opened.
bool is_ours(int file, const fs::path& path) {
    struct stat opened = {};
    struct stat named = {};
    return flock(file, LOCK_EX | LOCK_NB) == 0 && fstat(file, &opened) == 0 &&
           stat(path.c_str(), &named) == 0 && opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

// -1 with errno set.
int open_temporary(const fs::path& path) {
    return open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
}

// False with errno set. Network file systems may not know RENAME_NOREPLACE: a link refuses as well.
bool rename_to_target(const fs::path& temporary, const fs::path& target, Existing existing) {
    if (existing == Existing::kReplace) return rename(temporary.c_str(), target.c_str()) == 0;
    const char* const from = temporary.c_str();
    if (renameat2(AT_FDCWD, from, AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0) return true;
    return errno == EINVAL && link(from, target.c_str()) == 0 && unlink(from) == 0;
}

// False with errno set. A file system that knows no such request counts as done.
bool is_synced(int file) {
    return fsync(file) == 0 || errno == EINVAL || errno == EROFS || errno == ENOTSUP;
}

void sync_folder(const fs::path& folder) {
    const int file = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (file < 0) return;  // a folder may be writable and not readable
    fsync(file);
    close(file);
}

Failure cannot_write(const fs::path& target, const std::string& why) {
    return output_failure("cannot write \"" + target.string() + "\": " + why);
}

}  // namespace

NewFile::NewFile(fs::path target, Existing existing)
    : target_(std::move(target)), temporary_(temporary_name(target_, "")), existing_(existing) {
    std::error_code ignored;
    if (fs::is_directory(target_, ignored)) throw cannot_write(target_, "it is a folder");
    const fs::path folder = target_.parent_path();
    if (!folder.empty() && !fs::is_directory(folder, ignored))
        throw cannot_write(target_, "its folder does not exist");
    file_ = open_temporary(temporary_);
    if (file_ < 0 || !is_ours(file_, temporary_)) {
        // Another process writes the same target, another user left it, or the file system has no locks.
        if (file_ >= 0) close(file_);
        temporary_ = temporary_name(target_, std::to_string(getpid()) + ".");
        file_ = open_temporary(temporary_);
    }
    if (file_ < 0 || ftruncate(file_, 0) != 0) {
        const int error = errno;
        if (file_ >= 0) close(file_);
        throw cannot_write(target_, std::generic_category().message(error));
    }
}

NewFile::~NewFile() {
    if (!committed_) unlink(temporary_.c_str());
    close(file_);
}

void NewFile::commit() {
    // The contents were written through another descriptor of the same file.
    if (!is_synced(file_)) throw cannot_write(target_, std::generic_category().message(errno));
    if (!rename_to_target(temporary_, target_, existing_))
        throw cannot_write(target_, std::generic_category().message(errno));
    committed_ = true;
    sync_folder(target_.parent_path());
}

}  // namespace flumo::media
