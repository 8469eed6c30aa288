#include "studio/looks/looks_panel.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QMenu>
#include <QMessageBox>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "base/failure.h"
#include "scene/scene_text.h"
#include "studio/document/look_file.h"
#include "studio/theme/theme.h"

namespace flumo::studio {
namespace {

// A name from a dialog; empty when it was cancelled.
QString ask_for_name(QWidget* parent, const QString& title, const QString& start = {}) {
    return QInputDialog::getText(parent, title, QObject::tr("Name"), QLineEdit::Normal, start);
}

// A single-frame look shows its frame; a shot is shown where it has begun to move.
int frame_to_show(const scene::Scene& scene) {
    return scene.frames->at(scene.frames->size() / 3);
}

GridLook grid_look(const LookFile& file, const scene::ControlCatalog& catalog) try {
    scene::Scene scene = read_look(file.file, catalog);
    const QString about = QString::fromStdString(scene.description);
    auto state = std::make_shared<SceneState>(filled_in(std::move(scene)));
    state->scene.resolution = Resolution{};
    const int frame = frame_to_show(state->scene);
    return {file.name, about, std::move(state), frame};
} catch (const std::exception& error) {
    return {file.name, QString::fromUtf8(error.what()), nullptr, 0};
}

// Runs an action of the user's; what it cannot do is told.
template <typename Action>
void try_to(LooksPanel& panel, const Action& action) try {
    action();
} catch (const std::exception& error) {
    emit panel.failed(QString::fromUtf8(error.what()));
}

}  // namespace

LooksPanel::LooksPanel(Document& document, LookLibrary& library, Thumbnailer& thumbnailer, QWidget* parent)
    : QWidget(parent),
      document_(document),
      library_(library),
      folder_box_(new QComboBox(this)),
      grid_(new LookGrid(thumbnailer, this)) {
    folder_box_->setAccessibleName(tr("Folder of looks"));
    grid_->setAccessibleName(tr("Looks"));
    auto* const more = new QToolButton(this);
    more->setText(QStringLiteral("⋯"));
    more->setAccessibleName(tr("More about looks"));
    more->setPopupMode(QToolButton::InstantPopup);
    more->setFocusPolicy(Qt::StrongFocus);
    auto* const menu = new QMenu(more);
    connect(menu, &QMenu::aboutToShow, this, [this, menu] { fill_menu(*menu); });
    more->setMenu(menu);

    auto* const row = new QHBoxLayout;
    row->setSpacing(kGrid);
    row->addWidget(folder_box_, 1);
    row->addWidget(more);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(2 * kGrid, 2 * kGrid, 2 * kGrid, 0);
    column->setSpacing(2 * kGrid);
    column->addLayout(row);
    column->addWidget(grid_, 1);

    connect(folder_box_, &QComboBox::currentIndexChanged, this, &LooksPanel::show_looks);
    connect(&library, &LookLibrary::changed, this, &LooksPanel::show_folders);
    connect(grid_, &LookGrid::taken, this, &LooksPanel::take);
    show_folders();
}

void LooksPanel::fill_menu(QMenu& menu) {
    menu.clear();
    const bool own = !folder().is_shipped;
    const bool within = own && folder_box_->currentIndex() > 1;
    menu.addAction(tr("&Save present look here…"), this, &LooksPanel::save_look)->setEnabled(own);
    menu.addAction(tr("&Delete look…"), this, &LooksPanel::remove_look)
        ->setEnabled(own && grid_->currentItem());
    menu.addSeparator();
    menu.addAction(tr("&New folder…"), this, &LooksPanel::new_folder);
    menu.addAction(tr("&Rename folder…"), this, &LooksPanel::rename_folder)->setEnabled(within);
}

const LookFolder& LooksPanel::folder() const {
    return folders_.at(static_cast<std::size_t>(std::max(0, folder_box_->currentIndex())));
}

void LooksPanel::choose_folder(int place) {
    folder_box_->setCurrentIndex(place);
}

void LooksPanel::show_folders() {
    const QString shown = folder_box_->currentText();
    const QSignalBlocker quiet(folder_box_);
    folders_ = library_.folders();
    folder_box_->clear();
    for (const LookFolder& folder : folders_)
        folder_box_->addItem(folder.name);
    folder_box_->setCurrentIndex(std::max(0, folder_box_->findText(shown)));
    show_looks();
}

void LooksPanel::show_looks() {
    files_ = LookLibrary::looks(folder());
    std::vector<GridLook> looks;
    for (const LookFile& file : files_)
        looks.push_back(grid_look(file, document_.catalog()));
    grid_->show_looks(std::move(looks));
}

// The look alone: size, depth, frames and rate are the document's own.
void LooksPanel::take(int place) {
    const GridLook& look = grid_->looks().at(static_cast<std::size_t>(place));
    scene::Scene scene;
    scene.description = look.state->scene.description;
    scene.tracks = look.state->scene.tracks;
    document_.replace(std::move(scene), look.name);
}

void LooksPanel::go_to(const LookFolder& folder) {
    const int place = folder_box_->findText(folder.name);
    if (place >= 0) folder_box_->setCurrentIndex(place);
}

void LooksPanel::save_look() {
    const QString name = ask_for_name(this, tr("Save present look"));
    if (name.isEmpty()) return;
    try_to(*this, [&] { library_.save(folder(), name, scene::scene_text(document_.scene())); });
}

void LooksPanel::new_folder() {
    const QString name = ask_for_name(this, tr("New folder"));
    if (name.isEmpty()) return;
    try_to(*this, [&] { go_to(library_.make_folder(name)); });
}

void LooksPanel::rename_folder() {
    const QString name = ask_for_name(this, tr("Rename folder"), folder().name);
    if (name.isEmpty()) return;
    try_to(*this, [&] { go_to(library_.rename_folder(folder(), name)); });
}

void LooksPanel::remove_look() {
    const LookFile look = files_.at(static_cast<std::size_t>(grid_->currentRow()));
    const auto answer =
        QMessageBox::question(this, tr("Delete look"), tr("Delete “%1” from the disk?").arg(look.name),
                              QMessageBox::Yes | QMessageBox::Cancel);
    if (answer == QMessageBox::Yes) try_to(*this, [&] { library_.remove(look); });
}

}  // namespace flumo::studio
