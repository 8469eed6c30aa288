// Files that appear whole or not at all.
#pragma once

#include <filesystem>

namespace flumo::media {

/// What commit() does with a file that already has the target's name.
enum class Existing { kReplace, kKeep };

/// A file in the making: written under a temporary name in the folder of its target, and given the
/// target's name by commit(). A file that is not committed is deleted; the file that a killed process left
/// is reused by the next one that writes the same target.
class NewFile {
  public:
    /// Creates the empty temporary file. Throws Failure (unwritable output), naming the target.
    explicit NewFile(std::filesystem::path target, Existing existing = Existing::kReplace);
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    /// Where the contents are to be written.
    const std::filesystem::path& temporary() const { return temporary_; }

    /// Has the contents on the disk before the file gets its name, and the name after that, so that a machine
    /// that loses power leaves the old file or the whole new one. Throws Failure (unwritable output), also
    /// for a file that exists and is to be kept.
    void commit();

  private:
    std::filesystem::path target_;
    std::filesystem::path temporary_;
    Existing existing_;
    int file_ = -1;  ///< the temporary one, locked as long as it is written
    bool committed_ = false;
};

}  // namespace flumo::media
