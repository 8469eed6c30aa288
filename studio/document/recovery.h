// Unsaved work, kept where the next start of the program finds it.
#pragma once

#include <QObject>
#include <QTimer>
#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "scene/control.h"
#include "scene/scene.h"
#include "studio/document/document.h"

namespace flumo::studio {

/// A file of its own in the folder of recoveries, locked as long as its process lives: the system gives the
/// lock back whatever ends the process.
class RecoveryFile {
  public:
    /// A new one; its folder is made. Not locked where the folder cannot be written: then nothing is kept.
    explicit RecoveryFile(const std::filesystem::path& folder);
    /// One that another process left. Not locked where that process lives.
    static RecoveryFile left_behind(std::filesystem::path path);
    ~RecoveryFile();
    RecoveryFile(RecoveryFile&& other) noexcept;
    RecoveryFile& operator=(RecoveryFile&& other) noexcept;
    RecoveryFile(const RecoveryFile&) = delete;
    RecoveryFile& operator=(const RecoveryFile&) = delete;

    bool is_locked() const { return lock_ >= 0; }
    const std::filesystem::path& path() const { return path_; }
    /// Removes what was written; the file may be written again.
    void clear() const;

  private:
    RecoveryFile() = default;
    void lock();
    void release();

    std::filesystem::path path_;
    int lock_ = -1;
};

/// Work that a process left without saving it.
struct LeftWork {
    RecoveryFile file;
    std::filesystem::path document;  ///< the file that was edited; empty for a look without a name
    scene::Scene scene;
};

/// All in the folder whose processes have ended and that can be read, the newest first.
std::vector<LeftWork> left_work(const std::filesystem::path& folder, const scene::ControlCatalog& catalog);

/// Writes the document into a recovery file a while after each change, whole or not at all, on a thread of
/// its own.
class Recovery : public QObject {
    Q_OBJECT

  public:
    /// From the first change that is not kept until it is written.
    static constexpr int kDelay = 1000;  // milliseconds

    /// The document must outlive it.
    Recovery(Document& document, RecoveryFile file, QObject* parent = nullptr);
    /// Waits for a file that is being written; the file goes when everything is saved.
    ~Recovery() override;
    Recovery(const Recovery&) = delete;
    Recovery& operator=(const Recovery&) = delete;

    /// False where the folder of recoveries cannot be written: nothing is kept.
    bool can_write() const { return file_.is_locked(); }
    /// The file that is edited, for the one who finds the work.
    void set_document_path(const std::filesystem::path& path) { path_ = path; }
    /// Goes on in the file of work that was taken up.
    void adopt(RecoveryFile file);
    /// Everything is saved, or thrown away on purpose.
    void forget();

  private:
    struct Work {
        SharedState state;
        std::filesystem::path document;
        std::filesystem::path target;
    };

    void note_change();
    void hand_over();
    void write_all(const std::stop_token& stop);
    /// Waits until the thread has nothing to do.
    void finish_writing();

    Document& document_;
    RecoveryFile file_;
    std::filesystem::path path_;
    QTimer timer_;
    std::mutex mutex_;
    std::condition_variable_any changed_;
    std::optional<Work> next_;
    bool writing_ = false;
    std::jthread thread_;  ///< the last member: it uses the others
};

}  // namespace flumo::studio
