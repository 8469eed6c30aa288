#include "studio/export/export_dialog.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSettings>
#include <QStandardPaths>
#include <QVBoxLayout>

#include "scene/frame_list.h"
#include "studio/export/queue_view.h"
#include "studio/theme/theme.h"

namespace flumo::studio {
namespace {

constexpr int kGap = 2 * kGrid;
constexpr int kMargin = 4 * kGrid;
const QString kFolderKey = QStringLiteral("export/folder");
constexpr const char* kFileNames[] = {"still.png", "shot.####.png", "shot.mp4"};

QString last_folder() {
    return QSettings()
        .value(kFolderKey, QStandardPaths::writableLocation(QStandardPaths::PicturesLocation))
        .toString();
}

}  // namespace

ExportDialog::ExportDialog(Document& document, ExportQueue& queue, QWidget* parent)
    : QDialog(parent),
      document_(document),
      queue_(queue),
      kind_(new QComboBox(this)),
      output_(new QLineEdit(this)),
      frames_(new QLineEdit(this)),
      resolution_(new QComboBox(this)),
      exr_type_(new QComboBox(this)),
      linear_(new QCheckBox(tr("&Linear light"), this)),
      summary_(new QLabel(this)) {
    setWindowTitle(tr("Export"));
    resize(720, 520);
    auto* const list = new QScrollArea(this);
    list->setWidget(new QueueView(queue, list));
    list->setWidgetResizable(true);
    list->setAccessibleName(tr("Queue"));

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    column->setSpacing(kGap);
    column->addWidget(make_form());
    column->addWidget(summary_);
    column->addWidget(make_buttons());
    column->addWidget(list, 1);
    auto* const clear = new QPushButton(tr("C&lear finished"), this);
    clear->setAutoDefault(false);
    column->addWidget(clear, 0, Qt::AlignRight);
    connect(clear, &QPushButton::clicked, &queue, &ExportQueue::remove_finished);
    connect(&document, &Document::settings_changed, this, &ExportDialog::show_plan);
    const std::string resolution = resolution_text(document.scene().resolution.value_or(Resolution{}));
    resolution_->setCurrentIndex(std::max(0, resolution_->findData(QString::fromStdString(resolution))));
    choose_kind(kStill);
}

QWidget* ExportDialog::make_form() {
    auto* const form_widget = new QWidget(this);
    auto* const form = new QFormLayout(form_widget);
    form->setContentsMargins(0, 0, 0, 0);
    form->setHorizontalSpacing(kMargin);
    form->setVerticalSpacing(kGap);
    form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);

    kind_->addItems({tr("Still"), tr("Sequence of pictures"), tr("Video")});
    auto* const file_row = new QHBoxLayout;
    auto* const browse_button = new QPushButton(tr("&Browse…"), form_widget);
    browse_button->setAutoDefault(false);
    file_row->setSpacing(kGap);
    file_row->addWidget(output_, 1);
    file_row->addWidget(browse_button);
    output_->setToolTip(tr(
        "The ending tells the format: png, exr; mp4, mov, mkv, webm, gif. #### is the number of the frame."));
    output_->setObjectName(QStringLiteral("output"));
    frames_->setObjectName(QStringLiteral("frames"));
    frames_->setToolTip(tr("Such as 0-47, 0-100x2 or 3,7,12"));
    resolution_->addItem(tr("Full"), QStringLiteral("full"));
    resolution_->addItem(tr("Half"), QStringLiteral("half"));
    resolution_->addItem(tr("Third"), QStringLiteral("third"));
    resolution_->addItem(tr("Quarter"), QStringLiteral("quarter"));
    exr_type_->addItems({tr("Float"), tr("Half")});
    auto* const exr_row = new QHBoxLayout;
    exr_row->setSpacing(kGap);
    exr_row->addWidget(exr_type_);
    exr_row->addWidget(linear_);
    exr_row->addStretch(1);

    form->addRow(tr("&Kind"), kind_);
    form->addRow(tr("&File"), file_row);
    qobject_cast<QLabel*>(form->labelForField(file_row))->setBuddy(output_);
    form->addRow(tr("F&rames"), frames_);
    form->addRow(tr("R&esolution"), resolution_);
    form->addRow(tr("OpenE&XR"), exr_row);
    qobject_cast<QLabel*>(form->labelForField(exr_row))->setBuddy(exr_type_);
    output_->setAccessibleName(tr("File"));
    exr_type_->setAccessibleName(tr("OpenEXR samples"));

    connect(kind_, &QComboBox::activated, this, &ExportDialog::choose_kind);
    connect(browse_button, &QPushButton::clicked, this, &ExportDialog::browse);
    connect(output_, &QLineEdit::textChanged, this, &ExportDialog::show_plan);
    connect(frames_, &QLineEdit::textChanged, this, &ExportDialog::show_plan);
    connect(resolution_, &QComboBox::currentIndexChanged, this, &ExportDialog::show_plan);
    return form_widget;
}

QWidget* ExportDialog::make_buttons() {
    auto* const buttons = new QWidget(this);
    add_ = new QPushButton(tr("&Add to queue"), buttons);
    add_->setDefault(true);
    add_->setObjectName(QStringLiteral("add"));
    copy_ = new QPushButton(tr("&Copy as command"), buttons);
    copy_->setAutoDefault(false);
    summary_->setWordWrap(true);
    summary_->setMinimumHeight(2 * fontMetrics().lineSpacing());
    summary_->setObjectName(QStringLiteral("summary"));
    auto* const row = new QHBoxLayout(buttons);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(kGap);
    row->addStretch(1);
    row->addWidget(copy_);
    row->addWidget(add_);
    connect(add_, &QPushButton::clicked, this, &ExportDialog::add);
    connect(copy_, &QPushButton::clicked, this, &ExportDialog::copy_command);
    return buttons;
}

void ExportDialog::choose_kind(int kind) {
    kind_->setCurrentIndex(kind);
    const int now = document_.current_frame();
    const std::vector<int> frames =
        kind == kStill ? std::vector<int>{now} : document_.scene().frames.value_or(std::vector<int>{now});
    frames_->setText(QString::fromStdString(scene::frame_list_text(frames)));
    output_->setText(QDir(last_folder()).filePath(QString::fromLatin1(kFileNames[kind])));
    show_plan();
}

void ExportDialog::browse() {
    const QString chosen = QFileDialog::getSaveFileName(
        this, tr("Export to"), output_->text(),
        tr("Pictures and videos (*.png *.exr *.mp4 *.mov *.mkv *.webm *.gif);;All files (*)"));
    if (!chosen.isEmpty()) output_->setText(chosen);
}

ExportSettings ExportDialog::settings() const {
    ExportSettings settings;
    settings.output = QDir::current().absoluteFilePath(output_->text().trimmed()).toStdString();
    settings.frames = scene::parse_frame_list(frames_->text().trimmed().toStdString());
    settings.resolution = parse_resolution(resolution_->currentData().toString().toStdString());
    settings.exr_type = exr_type_->currentIndex() == 1 ? media::ExrType::kHalf : media::ExrType::kFloat;
    settings.linear = linear_->isChecked();
    return settings;
}

std::optional<ExportPlan> ExportDialog::plan() try {
    return plan_export(document_.scene(), settings(), document_.catalog());
} catch (const std::exception& error) {
    summary_->setText(QString::fromUtf8(error.what()));
    return std::nullopt;
}

void ExportDialog::show_plan() {
    const bool exr = output_->text().endsWith(QStringLiteral(".exr"), Qt::CaseInsensitive);
    exr_type_->setEnabled(exr);
    linear_->setEnabled(exr);
    const std::optional<ExportPlan> planned = plan();
    if (planned) summary_->setText(QString::fromStdString(planned->summary));
    add_->setEnabled(planned.has_value());
    copy_->setEnabled(planned.has_value());
}

void ExportDialog::add() {
    std::optional<ExportPlan> planned = plan();
    if (!planned) return;
    QSettings().setValue(kFolderKey, QString::fromStdString(planned->job.path_of(0).parent_path().string()));
    queue_.add(std::move(*planned));
}

void ExportDialog::copy_command() {
    if (const std::optional<ExportPlan> planned = plan())
        QApplication::clipboard()->setText(QString::fromStdString(planned->command));
}

}  // namespace flumo::studio
