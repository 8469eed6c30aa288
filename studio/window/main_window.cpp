#include "studio/window/main_window.h"

#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QMenuBar>

namespace flumo::studio {

MainWindow::MainWindow(job::Session& session, QWidget* parent)
    : QMainWindow(parent),
      session_(session),
      document_(new Document(session.catalog(), session.host(), this)),
      preview_(new Preview(*document_, this)),
      preview_panel_(new PreviewPanel(*preview_, this)) {
    setWindowTitle(QStringLiteral("Flumo Studio"));
    resize(1280, 720);
    setCentralWidget(preview_panel_);
    add_docks();
    add_menus();
}

QDockWidget* MainWindow::add_dock(Qt::DockWidgetArea area, const QString& name, const QString& title,
                                  QWidget* widget) {
    auto* dock = new QDockWidget(title, this);
    dock->setObjectName(name);
    dock->setWidget(widget);
    addDockWidget(area, dock);
    return dock;
}

void MainWindow::add_docks() {
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    add_dock(Qt::LeftDockWidgetArea, QStringLiteral("looks"), tr("Looks"), new QWidget);
    add_dock(Qt::RightDockWidgetArea, QStringLiteral("controls"), tr("Controls"), new QWidget);
    add_dock(Qt::BottomDockWidgetArea, QStringLiteral("timeline"), tr("Timeline"), new QWidget);
}

void MainWindow::add_menus() {
    QMenu* const file = menuBar()->addMenu(tr("&File"));
    QAction* const quit = file->addAction(tr("&Quit"), this, &QWidget::close);
    quit->setShortcut(QKeySequence::Quit);
    QMenu* const edit = menuBar()->addMenu(tr("&Edit"));
    QAction* const undo = document_->undo_stack().createUndoAction(this, tr("&Undo"));
    undo->setShortcut(QKeySequence::Undo);
    edit->addAction(undo);
    QAction* const redo = document_->undo_stack().createRedoAction(this, tr("&Redo"));
    redo->setShortcut(QKeySequence::Redo);
    edit->addAction(redo);
}

}  // namespace flumo::studio
