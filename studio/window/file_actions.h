// The file that is edited: new, open, save, recent files, clipboard, and work that was left unsaved.
#pragma once

#include <QObject>
#include <QStringList>
#include <filesystem>
#include <functional>

#include "studio/document/document.h"
#include "studio/document/recovery.h"

class QMenu;
class QWidget;

namespace flumo::studio {

class FileActions : public QObject {
    Q_OBJECT

  public:
    /// Window and document must outlive it.
    FileActions(Document& document, QWidget& window);

    /// Fills the menus; the actions get their shortcuts.
    void fill_file_menu(QMenu& menu);
    void fill_edit_menu(QMenu& menu);

    /// Empty for a look without a name.
    const std::filesystem::path& path() const { return path_; }
    bool is_modified() const;
    /// "look.json" or "Untitled".
    QString shown_name() const;

    /// Asks first where work would be lost, without stopping the program.
    void open_later(const std::filesystem::path& path);
    /// At once. A file that cannot be read leaves everything as it is, with a message.
    bool open(const std::filesystem::path& path);
    /// False with a message where it cannot be written.
    bool save_to(const std::filesystem::path& path);
    void copy_look() const;
    void paste_look();

    /// Runs `then` at once, or after the user has saved or thrown away the changes; not at all after Cancel.
    void when_saved(const std::function<void()>& then);
    /// Asks whether to go on with work that a process left.
    void offer_left_work();
    /// The program ends on purpose: nothing is to be recovered.
    void forget_recovery() { recovery_.forget(); }

    /// One message in the window, without stopping the program.
    void show_failure(const QString& text);

    static QStringList recent_files();
    static std::filesystem::path recovery_folder();

  signals:
    /// The file's name or whether it is modified.
    void name_changed();

  private:
    void new_document();
    void choose_and_open();
    void choose_and_save(const std::function<void()>& then);
    void save(const std::function<void()>& then);
    void fill_recent(QMenu& menu);
    void set_path(const std::filesystem::path& path);
    void take_up(LeftWork work);
    QString start_folder() const;

    Document& document_;
    QWidget& window_;
    std::filesystem::path path_;
    Recovery recovery_;
};

}  // namespace flumo::studio
