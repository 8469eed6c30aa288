#include "studio/window/file_actions.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QStandardPaths>
#include <algorithm>
#include <memory>

#include "base/failure.h"
#include "scene/scene_text.h"
#include "studio/document/look_file.h"

namespace flumo::studio {
namespace {

constexpr int kMostRecent = 10;

const QString kRecent = QStringLiteral("recent");
const QString kFolder = QStringLiteral("folder");

QString shown(const std::filesystem::path& path) {
    return QString::fromStdString(path.string());
}

void remember(const std::filesystem::path& path) {
    QSettings settings;
    const QString name = QFileInfo(shown(path)).absoluteFilePath();
    QStringList recent = settings.value(kRecent).toStringList();
    recent.removeAll(name);
    recent.prepend(name);
    settings.setValue(kRecent, recent.mid(0, kMostRecent));
    settings.setValue(kFolder, QFileInfo(name).absolutePath());
}

}  // namespace

FileActions::FileActions(Document& document, QWidget& window)
    : QObject(&window),
      document_(document),
      window_(window),
      recovery_(document, RecoveryFile(recovery_folder())) {
    connect(&document.undo_stack(), &QUndoStack::cleanChanged, this, &FileActions::name_changed);
}

std::filesystem::path FileActions::recovery_folder() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    return std::filesystem::path(folder.toStdString()) / "recovery";
}

QStringList FileActions::recent_files() {
    return QSettings().value(kRecent).toStringList();
}

void FileActions::fill_file_menu(QMenu& menu) {
    const auto add = [&](const QString& text, const QKeySequence& keys, const std::function<void()>& action) {
        menu.addAction(text, keys, this, action);
    };
    add(tr("&New"), QKeySequence::New, [this] { when_saved([this] { new_document(); }); });
    add(tr("&Open…"), QKeySequence::Open, [this] { choose_and_open(); });
    QMenu* const recent = menu.addMenu(tr("Open &Recent"));
    connect(recent, &QMenu::aboutToShow, this, [this, recent] { fill_recent(*recent); });
    menu.addSeparator();
    add(tr("&Save"), QKeySequence::Save, [this] { save({}); });
    add(tr("Save &As…"), Qt::CTRL | Qt::SHIFT | Qt::Key_S, [this] { choose_and_save({}); });
}

void FileActions::fill_edit_menu(QMenu& menu) {
    QAction* const undo = document_.undo_stack().createUndoAction(this, tr("&Undo"));
    undo->setShortcut(QKeySequence::Undo);
    menu.addAction(undo);
    QAction* const redo = document_.undo_stack().createRedoAction(this, tr("&Redo"));
    redo->setShortcut(QKeySequence::Redo);
    menu.addAction(redo);
    menu.addSeparator();
    // Text fields keep the plain keys for themselves.
    menu.addAction(tr("&Copy Look"), Qt::CTRL | Qt::SHIFT | Qt::Key_C, this, &FileActions::copy_look);
    menu.addAction(tr("&Paste Look"), Qt::CTRL | Qt::SHIFT | Qt::Key_V, this, &FileActions::paste_look);
}

void FileActions::fill_recent(QMenu& menu) {
    menu.clear();
    for (const QString& file : recent_files()) {
        menu.addAction(QDir::toNativeSeparators(file), this,
                       [this, file] { open_later(file.toStdString()); });
    }
    if (menu.isEmpty()) menu.addAction(tr("No recent files"))->setEnabled(false);
}

bool FileActions::is_modified() const {
    return !document_.undo_stack().isClean();
}

QString FileActions::shown_name() const {
    return path_.empty() ? tr("Untitled") : QString::fromStdString(path_.filename().string());
}

void FileActions::set_path(const std::filesystem::path& path) {
    path_ = path;
    recovery_.set_document_path(path);
    emit name_changed();
}

QString FileActions::start_folder() const {
    if (!path_.empty()) return shown(path_);
    return QSettings().value(kFolder, QDir::homePath()).toString();
}

void FileActions::new_document() {
    recovery_.forget();
    document_.load(new_scene());
    set_path({});
}

void FileActions::open_later(const std::filesystem::path& path) {
    when_saved([this, path] { open(path); });
}

// What a picture holds is not written back into it.
bool FileActions::open(const std::filesystem::path& path) try {
    scene::Scene scene = read_look(path, document_.catalog());
    recovery_.forget();
    document_.load(std::move(scene));
    set_path(holds_scene_in_header(path) ? std::filesystem::path() : path);
    remember(path);
    return true;
} catch (const std::exception& error) {
    show_failure(QString::fromUtf8(error.what()));
    return false;
}

bool FileActions::save_to(const std::filesystem::path& path) try {
    write_text_file(path, scene::scene_text(document_.scene()));
    document_.undo_stack().setClean();
    recovery_.forget();
    set_path(path);
    remember(path);
    return true;
} catch (const std::exception& error) {
    show_failure(QString::fromUtf8(error.what()));
    return false;
}

void FileActions::choose_and_open() {
    when_saved([this] {
        auto* dialog = new QFileDialog(
            &window_, tr("Open"), start_folder(),
            tr("Looks (*.json *.exr *.png *.mov *.mp4 *.mkv *.webm *.gif);;Scenes (*.json);;All files (*)"));
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->setFileMode(QFileDialog::ExistingFile);
        connect(dialog, &QFileDialog::fileSelected, this,
                [this](const QString& file) { open(file.toStdString()); });
        dialog->open();
    });
}

void FileActions::save(const std::function<void()>& then) {
    if (path_.empty()) {
        choose_and_save(then);
    } else if (save_to(path_) && then) {
        then();
    }
}

void FileActions::choose_and_save(const std::function<void()>& then) {
    auto* dialog = new QFileDialog(&window_, tr("Save As"), start_folder(), tr("Scenes (*.json)"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("flumo.json"));
    connect(dialog, &QFileDialog::fileSelected, this, [this, then](const QString& file) {
        if (save_to(file.toStdString()) && then) then();
    });
    dialog->open();
}

void FileActions::copy_look() const {
    QApplication::clipboard()->setText(QString::fromStdString(look_text(document_.scene())));
}

void FileActions::paste_look() try {
    const std::string text = QApplication::clipboard()->text().toStdString();
    document_.replace(parse_look(text, document_.catalog()), tr("Paste look"));
} catch (const std::exception& error) {
    show_failure(tr("The clipboard holds no look. %1").arg(QString::fromUtf8(error.what())));
}

void FileActions::when_saved(const std::function<void()>& then) {
    if (!is_modified()) {
        then();
        return;
    }
    auto* box = new QMessageBox(QMessageBox::Question, QApplication::applicationDisplayName(),
                                tr("Save the changes to %1?").arg(shown_name()),
                                QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, &window_);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setDefaultButton(QMessageBox::Save);
    connect(box, &QMessageBox::finished, this, [this, then](int button) {
        if (button == QMessageBox::Save) save(then);
        if (button == QMessageBox::Discard) then();
    });
    box->open();
}

void FileActions::offer_left_work() {
    if (!recovery_.can_write())
        show_failure(tr("Unsaved work cannot be kept: the folder %1 cannot be written.")
                         .arg(shown(recovery_folder())));
    std::vector<LeftWork> works = left_work(recovery_folder(), document_.catalog());
    if (works.empty()) return;
    // Of several the newest comes first; the next start offers the others.
    const auto work = std::make_shared<LeftWork>(std::move(works.front()));
    const QString name = work->document.empty() ? tr("a look without a name") : shown(work->document);
    auto* box = new QMessageBox(QMessageBox::Question, QApplication::applicationDisplayName(),
                                tr("The program ended before %1 was saved. Restore the changes?").arg(name),
                                QMessageBox::NoButton, &window_);
    box->setAttribute(Qt::WA_DeleteOnClose);
    QPushButton* const restore = box->addButton(tr("Restore"), QMessageBox::AcceptRole);
    QPushButton* const discard = box->addButton(tr("Discard"), QMessageBox::DestructiveRole);
    QPushButton* const later = box->addButton(tr("Ask Later"), QMessageBox::RejectRole);
    box->setDefaultButton(restore);
    box->setEscapeButton(later);
    connect(box, &QMessageBox::buttonClicked, this, [this, work, restore, discard](QAbstractButton* button) {
        if (button == restore) take_up(std::move(*work));
        if (button == discard) work->file.clear();
    });
    box->open();
}

void FileActions::take_up(LeftWork work) {
    document_.load(std::move(work.scene));
    recovery_.adopt(std::move(work.file));
    set_path(work.document);
    document_.undo_stack().resetClean();
    emit name_changed();
}

void FileActions::show_failure(const QString& text) {
    auto* box = new QMessageBox(QMessageBox::Warning, QApplication::applicationDisplayName(), text,
                                QMessageBox::Ok, &window_);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

}  // namespace flumo::studio
