#include "studio/controls/editors/layer_editor.h"

#include <QDragEnterEvent>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QMimeData>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>
#include <system_error>

#include "studio/controls/editors/metrics.h"

namespace flumo::studio {
namespace {

constexpr int kButtonPadding = 16;  // of a push button, left and right together

QString as_text(const std::filesystem::path& path) {
    return QString::fromStdString(path.string());
}

// The one file of a drop; empty for anything else.
std::filesystem::path dropped_file(const QMimeData* data) {
    if (data->urls().size() != 1) return {};
    return data->urls().front().toLocalFile().toStdString();
}

}  // namespace

LayerEditor::LayerEditor(const scene::Control& control, QWidget* parent)
    : ControlEditor(control, parent),
      file_button_(new QPushButton(this)),
      clear_button_(new QToolButton(this)) {
    const QString name = QString::fromStdString(control.name);
    file_button_->setAccessibleName(name);
    file_button_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    clear_button_->setIcon(style()->standardIcon(QStyle::SP_LineEditClearButton));
    clear_button_->setAutoRaise(true);
    clear_button_->setToolTip(tr("No layer"));
    clear_button_->setAccessibleName(name + tr(", no layer"));
    clear_button_->setFocusPolicy(Qt::StrongFocus);
    setAcceptDrops(true);

    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(metrics::kGrid);
    row->addWidget(file_button_, 1);
    row->addWidget(clear_button_);
    show_file();

    connect(file_button_, &QPushButton::clicked, this, &LayerEditor::ask_for_file);
    connect(clear_button_, &QToolButton::clicked, this, [this] { choose({}); });
}

void LayerEditor::ask_for_file() {
    const QString chosen = QFileDialog::getOpenFileName(
        this, tr("Layer for %1").arg(QString::fromStdString(control().name)), as_text(file_.parent_path()),
        tr("Pictures and videos (*.png *.exr *.jpg *.jpeg *.tif *.tiff *.webp *.mp4 *.mov *.mkv *.webm);;"
           "All files (*)"));
    if (!chosen.isEmpty()) choose(chosen.toStdString());
}

void LayerEditor::choose(const std::filesystem::path& file) {
    file_ = file;
    show_file();
    change_once(file);
}

void LayerEditor::show_value(const scene::ControlValue& value) {
    const auto* const file = std::get_if<std::filesystem::path>(&value);
    if (!file) return;
    file_ = *file;
    show_file();
}

void LayerEditor::show_file() {
    std::error_code ignored;
    const bool missing = !file_.empty() && !std::filesystem::exists(file_, ignored);
    QString text = file_.empty() ? tr("Choose or drop…") : as_text(file_.filename());
    if (missing) text = tr("Missing: %1").arg(text);
    const int room = std::max(40, file_button_->width() - kButtonPadding);
    file_button_->setText(fontMetrics().elidedText(text, Qt::ElideMiddle, room));
    file_button_->setToolTip(file_.empty() ? QString() : as_text(file_));
    clear_button_->setEnabled(!file_.empty());
}

QWidget* LayerEditor::main_widget() {
    return file_button_;
}

void LayerEditor::dragEnterEvent(QDragEnterEvent* event) {
    if (!dropped_file(event->mimeData()).empty()) event->acceptProposedAction();
}

void LayerEditor::dropEvent(QDropEvent* event) {
    const std::filesystem::path file = dropped_file(event->mimeData());
    if (file.empty()) return;
    event->acceptProposedAction();
    choose(file);
}

void LayerEditor::resizeEvent(QResizeEvent* event) {
    ControlEditor::resizeEvent(event);
    show_file();
}

}  // namespace flumo::studio
