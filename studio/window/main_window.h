// The window: the preview in the middle, and docks around it.
#pragma once

#include <QMainWindow>

#include "job/session.h"
#include "studio/document/document.h"
#include "studio/preview/preview.h"
#include "studio/preview/preview_panel.h"

namespace flumo::studio {

class MainWindow : public QMainWindow {
    Q_OBJECT

  public:
    /// The session must outlive the window. Throws HostError.
    explicit MainWindow(job::Session& session, QWidget* parent = nullptr);

    Document& document() { return *document_; }
    Preview& preview() { return *preview_; }
    PreviewPanel& preview_panel() { return *preview_panel_; }

  private:
    /// A dock with this widget; `name` is unique, for the stored layout.
    QDockWidget* add_dock(Qt::DockWidgetArea area, const QString& name, const QString& title,
                          QWidget* widget);
    void add_docks();
    void add_menus();

    job::Session& session_;
    Document* document_;
    Preview* preview_;
    PreviewPanel* preview_panel_;
};

}  // namespace flumo::studio
