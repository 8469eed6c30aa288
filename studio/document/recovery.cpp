#include "studio/document/recovery.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUuid>
#include <algorithm>
#include <utility>

#include "base/file_contents.h"
#include "scene/scene_text.h"
#include "studio/document/look_file.h"

namespace flumo::studio {
namespace {

namespace fs = std::filesystem;

const QString kDocument = QStringLiteral("document");
const QString kScene = QStringLiteral("scene");
constexpr const char* kEnding = ".recovery";

fs::path lock_path(const fs::path& path) {
    return fs::path(path).concat(".lock");
}

std::string recovery_text(const SceneState& state, const fs::path& document) {
    const QJsonObject object{{kDocument, QString::fromStdString(document.string())},
                             {kScene, QString::fromStdString(scene::scene_text(state.scene))}};
    return QJsonDocument(object).toJson().toStdString();
}

}  // namespace

RecoveryFile::RecoveryFile(const fs::path& folder)
    : path_(folder / (QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString() + kEnding)) {
    std::error_code ignored;
    fs::create_directories(folder, ignored);
    lock();
}

RecoveryFile RecoveryFile::left_behind(fs::path path) {
    RecoveryFile file;
    file.path_ = std::move(path);
    file.lock();
    return file;
}

void RecoveryFile::lock() {
    lock_ = open(lock_path(path_).c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    if (lock_ >= 0 && flock(lock_, LOCK_EX | LOCK_NB) != 0) {
        close(lock_);
        lock_ = -1;
    }
}

// The file stays as long as it holds work.
void RecoveryFile::release() {
    if (lock_ < 0) return;
    std::error_code ignored;
    if (!fs::exists(path_, ignored)) fs::remove(lock_path(path_), ignored);
    close(std::exchange(lock_, -1));
}

RecoveryFile::~RecoveryFile() {
    release();
}

RecoveryFile::RecoveryFile(RecoveryFile&& other) noexcept
    : path_(std::move(other.path_)), lock_(std::exchange(other.lock_, -1)) {}

RecoveryFile& RecoveryFile::operator=(RecoveryFile&& other) noexcept {
    if (this != &other) {
        release();
        path_ = std::move(other.path_);
        lock_ = std::exchange(other.lock_, -1);
    }
    return *this;
}

void RecoveryFile::clear() const {
    std::error_code ignored;
    fs::remove(path_, ignored);
}

std::vector<LeftWork> left_work(const fs::path& folder, const scene::ControlCatalog& catalog) {
    std::vector<std::pair<fs::file_time_type, fs::path>> paths;
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator(folder, ignored)) {
        if (entry.path().extension() == kEnding)
            paths.emplace_back(entry.last_write_time(ignored), entry.path());
    }
    std::ranges::sort(paths, std::greater());
    std::vector<LeftWork> works;
    for (const auto& [time, path] : paths) {
        RecoveryFile file = RecoveryFile::left_behind(path);
        if (!file.is_locked()) continue;
        try {
            const std::string text = read_text_file(path);
            const QJsonObject object = QJsonDocument::fromJson(QByteArray::fromStdString(text)).object();
            scene::Scene scene = scene::parse_scene(object[kScene].toString().toStdString(), path, catalog);
            works.push_back({std::move(file), object[kDocument].toString().toStdString(), std::move(scene)});
        } catch (const std::exception&) {
            // Of another version perhaps, which can read it.
        }
    }
    return works;
}

Recovery::Recovery(Document& document, RecoveryFile file, QObject* parent)
    : QObject(parent), document_(document), file_(std::move(file)) {
    timer_.setSingleShot(true);
    timer_.setInterval(kDelay);
    connect(&timer_, &QTimer::timeout, this, &Recovery::hand_over);
    connect(&document, &Document::control_changed, this, &Recovery::note_change);
    connect(&document, &Document::settings_changed, this, &Recovery::note_change);
    thread_ = std::jthread([this](const std::stop_token& stop) { write_all(stop); });
}

Recovery::~Recovery() {
    thread_.request_stop();
    thread_.join();
}

void Recovery::adopt(RecoveryFile file) {
    forget();
    file_ = std::move(file);
}

void Recovery::note_change() {
    if (!timer_.isActive()) timer_.start();
}

void Recovery::hand_over() {
    if (!file_.is_locked()) return;
    if (document_.undo_stack().isClean()) {
        forget();
        return;
    }
    const std::lock_guard lock(mutex_);
    next_ = Work{document_.state(), path_, file_.path()};
    changed_.notify_all();
}

void Recovery::forget() {
    timer_.stop();
    finish_writing();
    if (file_.is_locked()) file_.clear();
}

void Recovery::finish_writing() {
    std::unique_lock lock(mutex_);
    next_.reset();
    changed_.wait(lock, [this] { return !writing_; });
}

void Recovery::write_all(const std::stop_token& stop) {
    std::unique_lock lock(mutex_);
    while (changed_.wait(lock, stop, [this] { return next_.has_value(); })) {
        const Work work = *std::exchange(next_, std::nullopt);
        writing_ = true;
        lock.unlock();
        try {
            write_text_file(work.target, recovery_text(*work.state, work.document));
        } catch (const std::exception&) {
            // A disk that is full: the next change tries again.
        }
        lock.lock();
        writing_ = false;
        changed_.notify_all();
    }
}

}  // namespace flumo::studio
