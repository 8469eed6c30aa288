// The shipped looks and the user's folders of looks.
#pragma once

#include <QWidget>

#include "studio/document/document.h"
#include "studio/looks/look_grid.h"
#include "studio/looks/look_library.h"

class QComboBox;
class QMenu;

namespace flumo::studio {

class LooksPanel : public QWidget {
    Q_OBJECT

  public:
    /// All must outlive the panel.
    LooksPanel(Document& document, LookLibrary& library, Thumbnailer& thumbnailer, QWidget* parent = nullptr);

    LookGrid& grid() { return *grid_; }
    void choose_folder(int place);

  signals:
    /// One line about something that could not be done.
    void failed(const QString& message);

  private:
    void fill_menu(QMenu& menu);
    void show_folders();
    void show_looks();
    void take(int place);
    void save_look();
    void new_folder();
    void rename_folder();
    void remove_look();
    void go_to(const LookFolder& folder);
    const LookFolder& folder() const;

    Document& document_;
    LookLibrary& library_;
    QComboBox* folder_box_;
    LookGrid* grid_;
    std::vector<LookFolder> folders_;
    std::vector<LookFile> files_;
};

}  // namespace flumo::studio
