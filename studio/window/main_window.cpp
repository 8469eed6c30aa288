#include "studio/window/main_window.h"

#include <QAction>
#include <QActionGroup>
#include <QCloseEvent>
#include <QDockWidget>
#include <QMenuBar>
#include <QMimeData>
#include <QSettings>
#include <QShortcut>

#include "studio/window/settings_dialog.h"

namespace flumo::studio {
namespace {

// Changes with the docks: a stored layout of other docks is not restored.
constexpr int kLayoutVersion = 1;
constexpr int kControlsWidth = 90 * kGrid;
constexpr int kLooksWidth = 50 * kGrid;
constexpr int kTimelineHeight = 36 * kGrid;

const QString kGeometry = QStringLiteral("window/geometry");
const QString kLayout = QStringLiteral("window/layout");
const QString kTheme = QStringLiteral("window/light");

Theme stored_theme() {
    return QSettings().value(kTheme, false).toBool() ? Theme::kLight : Theme::kDark;
}

}  // namespace

MainWindow::MainWindow(job::Session& session, QWidget* parent)
    : QMainWindow(parent),
      session_(session),
      document_(new Document(session.catalog(), session.host(), this)),
      preview_(new Preview(*document_, this)),
      preview_panel_(new PreviewPanel(*preview_, this)),
      timeline_(new TimelinePanel(*document_, *preview_)),
      files_(new FileActions(*document_, *this)) {
    apply_theme(stored_theme());
    setCentralWidget(preview_panel_);
    setDockOptions(AnimatedDocks | AllowNestedDocks | AllowTabbedDocks);
    setAcceptDrops(true);
    add_docks();
    add_menus();
    connect(files_, &FileActions::name_changed, this, &MainWindow::show_name);
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
        add_dock(Qt::LeftDockWidgetArea, QStringLiteral("looks"), tr("Looks"), new QWidget);
    QDockWidget* const controls =
        add_dock(Qt::RightDockWidgetArea, QStringLiteral("controls"), tr("Controls"), new QWidget);
    QDockWidget* const timeline =
        add_dock(Qt::BottomDockWidgetArea, QStringLiteral("timeline"), tr("Timeline"), timeline_);
    resizeDocks({looks, controls}, {kLooksWidth, kControlsWidth}, Qt::Horizontal);
    resizeDocks({timeline}, {kTimelineHeight}, Qt::Vertical);
}

void MainWindow::add_menus() {
    QMenu* const file = menuBar()->addMenu(tr("&File"));
    files_->fill_file_menu(*file);
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
    fill_view_menu(*menuBar()->addMenu(tr("&View")));
    fill_playback_menu(*menuBar()->addMenu(tr("&Playback")));
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

void MainWindow::fill_view_menu(QMenu& menu) {
    PreviewView* const view = &preview_panel_->view();
    menu.addAction(tr("&Fit"), Qt::CTRL | Qt::Key_0, view, &PreviewView::fit);
    menu.addAction(tr("&Actual Pixels"), Qt::CTRL | Qt::Key_1, view, [view] { view->set_zoom(1); });
    menu.addAction(tr("Zoom &In"), QKeySequence::ZoomIn, view, &PreviewView::zoom_in);
    menu.addAction(tr("Zoom &Out"), QKeySequence::ZoomOut, view, &PreviewView::zoom_out);
    QAction* const smooth = menu.addAction(tr("&Blend Magnified Pixels"));
    smooth->setCheckable(true);
    connect(smooth, &QAction::toggled, view, &PreviewView::set_smooth);
    menu.addSeparator();
    QMenu* const channels = menu.addMenu(tr("&Channels"));
    const QStringList names = {tr("&RGB"),  tr("Re&d"),   tr("&Green"),
                               tr("&Blue"), tr("&Alpha"), tr("&Luminance")};
    for (int i = 0; i < names.size(); ++i) {
        channels->addAction(names[i], QKeySequence(Qt::ALT | static_cast<Qt::Key>(Qt::Key_1 + i)), this,
                            [this, i] { preview_panel_->choose_channels(i); });
    }
    menu.addSeparator();
    for (QDockWidget* const dock : findChildren<QDockWidget*>())
        menu.addAction(dock->toggleViewAction());
    menu.addSeparator();
    QAction* const light = menu.addAction(tr("&Light Colours"));
    light->setCheckable(true);
    light->setChecked(stored_theme() == Theme::kLight);
    connect(light, &QAction::toggled, this,
            [this](bool on) { choose_theme(on ? Theme::kLight : Theme::kDark); });
}

void MainWindow::choose_theme(Theme theme) {
    QSettings().setValue(kTheme, theme == Theme::kLight);
    apply_theme(theme);
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
