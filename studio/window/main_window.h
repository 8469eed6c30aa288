// The window: the preview in the middle, and docks around it.
#pragma once

#include <QMainWindow>

#include "job/session.h"
#include "studio/controls/control_panel.h"
#include "studio/document/document.h"
#include "studio/export/export_queue.h"
#include "studio/looks/comparison.h"
#include "studio/looks/look_library.h"
#include "studio/looks/thumbnailer.h"
#include "studio/preview/preview.h"
#include "studio/preview/preview_panel.h"
#include "studio/theme/theme.h"
#include "studio/timeline/timeline_panel.h"
#include "studio/window/file_actions.h"

namespace flumo::studio {

class MainWindow : public QMainWindow {
    Q_OBJECT

  public:
    /// The session must outlive the window. Throws HostError.
    explicit MainWindow(job::Session& session, QWidget* parent = nullptr);

    Document& document() { return *document_; }
    Preview& preview() { return *preview_; }
    PreviewPanel& preview_panel() { return *preview_panel_; }
    TimelinePanel& timeline() { return *timeline_; }
    FileActions& files() { return *files_; }
    ControlPanel& controls() { return *controls_; }
    Comparison& comparison() { return *comparison_; }
    ExportQueue& exports() { return *exports_; }

  protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    /// A dock with this widget; `name` is unique, for the stored layout.
    QDockWidget* add_dock(Qt::DockWidgetArea area, const QString& name, const QString& title,
                          QWidget* widget);
    void add_docks();
    QWidget* make_looks();
    void add_menus();
    void fill_playback_menu(QMenu& menu);
    void show_export();
    bool may_stop_exports();
    void fill_help_menu(QMenu& menu);
    /// Puts the keyboard into the next panel, or into the previous one with -1.
    void focus_panel(int step);
    void show_name();
    void restore_layout();
    void store_layout() const;

    job::Session& session_;
    Document* document_;
    Preview* preview_;
    PreviewPanel* preview_panel_;
    TimelinePanel* timeline_;
    FileActions* files_;
    ControlPanel* controls_;
    LookLibrary* library_;
    Thumbnailer* thumbnailer_;
    Comparison* comparison_;
    ExportQueue* exports_;
    QWidget* export_dialog_ = nullptr;
    bool may_close_ = false;
};

}  // namespace flumo::studio
