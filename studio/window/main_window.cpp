#include "studio/window/main_window.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QSettings>
#include <QShortcut>
#include <QStandardPaths>
#include <QTabWidget>
#include <algorithm>
#include <utility>
#include <vector>

#include "studio/export/export_dialog.h"
#include "studio/looks/looks_panel.h"
#include "studio/looks/variations_panel.h"
#include "studio/window/settings_dialog.h"
#include "studio/window/view_menu.h"

namespace flumo::studio {
namespace {

// Changes with the docks: a stored layout of other docks is not restored.
constexpr int kLayoutVersion = 1;
constexpr int kControlsWidth = 90 * kGrid;
constexpr int kLooksWidth = 50 * kGrid;
constexpr int kTimelineHeight = 36 * kGrid;

const QString kGeometry = QStringLiteral("window/geometry");
const QString kLayout = QStringLiteral("window/layout");

std::filesystem::path own_folder(QStandardPaths::StandardLocation location, const char* name) {
    return std::filesystem::path(QStandardPaths::writableLocation(location).toStdString()) / name;
}

}  // namespace

MainWindow::MainWindow(job::Session& session, QWidget* parent)
    : QMainWindow(parent),
      session_(session),
      document_(new Document(session.catalog(), session.host(), this)),
      preview_(new Preview(*document_, this)),
      preview_panel_(new PreviewPanel(*preview_, this)),
      timeline_(new TimelinePanel(*document_, *preview_)),
      files_(new FileActions(*document_, *this)),
      controls_(new ControlPanel(*document_)),
      library_(new LookLibrary(own_folder(QStandardPaths::AppDataLocation, "looks"), this)),
      thumbnailer_(new Thumbnailer(session.catalog(), session.host(),
                                   own_folder(QStandardPaths::CacheLocation, "thumbnails"), this)),
      comparison_(new Comparison(*document_, preview_panel_->view(), *thumbnailer_, this)),
      exports_(new ExportQueue(session, this)) {
    document_->load(new_scene());
    restore_view_settings(*preview_);
    setCentralWidget(preview_panel_);
    setDockOptions(AnimatedDocks | AllowNestedDocks | AllowTabbedDocks);
    setAcceptDrops(true);
    add_docks();
    add_menus();
    connect(files_, &FileActions::name_changed, this, &MainWindow::show_name);
    connect(controls_, &ControlPanel::failed, files_, &FileActions::show_failure);
    connect(comparison_, &Comparison::failed, files_, &FileActions::show_failure);
    // The preview goes before thumbnails.
    connect(document_, &Document::control_changed, thumbnailer_, &Thumbnailer::postpone);
    connect(document_, &Document::frame_changed, thumbnailer_, &Thumbnailer::postpone);
    connect(preview_, &Preview::frame_shown, thumbnailer_, &Thumbnailer::postpone);
    thumbnailer_->postpone();
    show_name();
    restore_layout();
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
    QDockWidget* const looks =
        add_dock(Qt::LeftDockWidgetArea, QStringLiteral("looks"), tr("Looks"), make_looks());
    QDockWidget* const controls =
        add_dock(Qt::RightDockWidgetArea, QStringLiteral("controls"), tr("Controls"), controls_);
    QDockWidget* const timeline =
        add_dock(Qt::BottomDockWidgetArea, QStringLiteral("timeline"), tr("Timeline"), timeline_);
    resizeDocks({looks, controls}, {kLooksWidth, kControlsWidth}, Qt::Horizontal);
    resizeDocks({timeline}, {kTimelineHeight}, Qt::Vertical);
}

QWidget* MainWindow::make_looks() {
    auto* const looks = new LooksPanel(*document_, *library_, *thumbnailer_);
    connect(looks, &LooksPanel::failed, files_, &FileActions::show_failure);
    auto* const tabs = new QTabWidget;
    tabs->setDocumentMode(true);
    tabs->addTab(looks, tr("Looks"));
    tabs->addTab(new VariationsPanel(*document_, *thumbnailer_), tr("Variations"));
    return tabs;
}

void MainWindow::show_export() {
    if (!export_dialog_) export_dialog_ = new ExportDialog(*document_, *exports_, this);
    export_dialog_->show();
    export_dialog_->raise();
    export_dialog_->activateWindow();
}

bool MainWindow::may_stop_exports() {
    return !exports_->is_busy() ||
           QMessageBox::question(this, tr("Exports"), tr("Stop the exports that are not finished?"),
                                 QMessageBox::Yes | QMessageBox::Cancel) == QMessageBox::Yes;
}

void MainWindow::add_menus() {
    QMenu* const file = menuBar()->addMenu(tr("&File"));
    files_->fill_file_menu(*file);
    file->addSeparator();
    file->addAction(tr("&Export…"), Qt::CTRL | Qt::Key_E, this, &MainWindow::show_export);
    file->addSeparator();
    file->addAction(tr("&Quit"), QKeySequence::Quit, this, &QWidget::close);
    QMenu* const edit = menuBar()->addMenu(tr("&Edit"));
    files_->fill_edit_menu(*edit);
    edit->addSeparator();
    edit->addAction(tr("Scene &Settings…"), Qt::CTRL | Qt::Key_K, this, [this] {
        auto* dialog = new SettingsDialog(*document_, this);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->open();
    });
    edit->addAction(tr("Re&load Layers"), Qt::Key_F5, preview_, &Preview::reload);
    edit->addAction(tr("&Find Control"), QKeySequence::Find, controls_, &ControlPanel::focus_search);
    QMenu* const view = menuBar()->addMenu(tr("&View"));
    fill_view_menu(*view, *preview_panel_, *preview_);
    view->addSeparator();
    for (QDockWidget* const dock : findChildren<QDockWidget*>())
        view->addAction(dock->toggleViewAction());
    view->addAction(tr("&Next Panel"), Qt::Key_F6, this, [this] { focus_panel(1); });
    view->addAction(tr("&Previous Panel"), Qt::SHIFT | Qt::Key_F6, this, [this] { focus_panel(-1); });
    comparison_->fill_menu(*menuBar()->addMenu(tr("&Compare")));
    fill_playback_menu(*menuBar()->addMenu(tr("&Playback")));
    fill_help_menu(*menuBar()->addMenu(tr("&Help")));
}

void MainWindow::fill_playback_menu(QMenu& menu) {
    Player* const player = &timeline_->player();
    QAction* const play = menu.addAction(tr("&Play"), player, &Player::toggle);
    play->setShortcuts({Qt::CTRL | Qt::Key_Space});
    connect(player, &Player::playing_changed, play,
            [play](bool playing) { play->setText(playing ? tr("&Pause") : tr("&Play")); });
    menu.addAction(tr("&Next Frame"), Qt::ALT | Qt::Key_Right, player, &Player::step_forward);
    menu.addAction(tr("Pre&vious Frame"), Qt::ALT | Qt::Key_Left, player, &Player::step_back);
    menu.addAction(tr("&First Frame"), Qt::ALT | Qt::Key_Home, player, &Player::go_to_first);
    menu.addAction(tr("&Last Frame"), Qt::ALT | Qt::Key_End, player, &Player::go_to_last);
    menu.addSeparator();
    menu.addAction(tr("Show &All Frames"), Qt::ALT | Qt::Key_0, &timeline_->view(), &TimelineView::fit);
    // Elsewhere the space bar presses buttons and check boxes.
    for (QWidget* const place :
         {static_cast<QWidget*>(preview_panel_), static_cast<QWidget*>(&timeline_->view())}) {
        auto* shortcut = new QShortcut(Qt::Key_Space, place);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, player, &Player::toggle);
    }
}

void MainWindow::fill_help_menu(QMenu& menu) {
    menu.addAction(tr("&About Flumo Studio"), this, [this] {
        auto* box =
            new QMessageBox(QMessageBox::NoIcon, tr("About Flumo Studio"),
                            tr("<b>Flumo Studio %1</b><p>Makes looks of the Flumo effect.</p><p>Qt %2, "
                               "used under the terms of the LGPL 3.</p>")
                                .arg(QApplication::applicationVersion(), QLatin1String(qVersion())),
                            QMessageBox::Ok, this);
        box->setAttribute(Qt::WA_DeleteOnClose);
        box->open();
    });
    menu.addAction(tr("About &Qt"), qApp, &QApplication::aboutQt);
}

// The preview, then the docks that are shown, from left to right and from top to bottom.
void MainWindow::focus_panel(int step) {
    std::vector<QWidget*> panels;
    for (QDockWidget* const dock : findChildren<QDockWidget*>()) {
        if (dock->isVisible()) panels.push_back(dock->widget());
    }
    panels.push_back(preview_panel_);
    std::ranges::sort(panels, {}, [this](const QWidget* panel) {
        const QPoint place = panel->mapTo(this, QPoint());
        return std::pair(place.x(), place.y());
    });
    const auto present = std::ranges::find_if(panels, [](const QWidget* panel) {
        return panel->hasFocus() || panel->isAncestorOf(QApplication::focusWidget());
    });
    const auto count = static_cast<std::ptrdiff_t>(panels.size());
    const std::ptrdiff_t from = present == panels.end() ? (step > 0 ? -1 : 0) : present - panels.begin();
    QWidget* const panel = panels[static_cast<std::size_t>((from + step + count) % count)];
    // A panel that takes no keys itself has a part that does.
    QWidget* target = panel == timeline_ ? &timeline_->view() : panel;
    if (panel == preview_panel_) target = &preview_panel_->view();
    while (!(target->focusPolicy() & Qt::TabFocus) && target->nextInFocusChain() != panel)
        target = target->nextInFocusChain();
    target->setFocus(Qt::ShortcutFocusReason);
}

void MainWindow::show_name() {
    setWindowTitle(files_->shown_name() + QStringLiteral("[*]"));
    setWindowModified(files_->is_modified());
    setWindowFilePath(QString::fromStdString(files_->path().string()));
}

void MainWindow::restore_layout() {
    const QSettings settings;
    if (!restoreGeometry(settings.value(kGeometry).toByteArray())) resize(1280, 720);
    restoreState(settings.value(kLayout).toByteArray(), kLayoutVersion);
}

void MainWindow::store_layout() const {
    QSettings settings;
    settings.setValue(kGeometry, saveGeometry());
    settings.setValue(kLayout, saveState(kLayoutVersion));
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!may_stop_exports()) return event->ignore();
    if (!may_close_ && files_->is_modified()) {
        event->ignore();
        files_->when_saved([this] {
            may_close_ = true;
            close();
        });
        return;
    }
    files_->forget_recovery();
    store_layout();
    event->accept();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.isEmpty() || !urls.front().isLocalFile()) return;
    event->acceptProposedAction();
    files_->open_later(urls.front().toLocalFile().toStdString());
}

}  // namespace flumo::studio
