#include "studio/window/settings_dialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <algorithm>
#include <array>

#include "base/failure.h"
#include "base/frame_rate.h"
#include "base/resolution.h"
#include "scene/frame_list.h"
#include "studio/theme/theme.h"

namespace flumo::studio {
namespace {

constexpr std::array kDepths = {8, 16, 32};

}  // namespace

SettingsDialog::SettingsDialog(Document& document, QWidget* parent)
    : QDialog(parent),
      document_(document),
      width_(new QSpinBox(this)),
      height_(new QSpinBox(this)),
      resolution_(new QComboBox(this)),
      depth_(new QComboBox(this)),
      frames_(new QLineEdit(this)),
      rate_(new QLineEdit(this)),
      description_(new QLineEdit(this)),
      message_(new QLabel(this)) {
    setWindowTitle(tr("Scene Settings"));
    const scene::Scene& scene = document.scene();
    for (QSpinBox* const side : {width_, height_}) {
        side->setRange(1, kLargestSide);
        side->setSuffix(tr(" px"));
    }
    width_->setValue(scene.size->width);
    height_->setValue(scene.size->height);
    resolution_->setEditable(true);
    for (const char* const choice : {"full", "half", "third", "quarter"})
        resolution_->addItem(QLatin1String(choice));
    resolution_->setCurrentText(QString::fromStdString(resolution_text(*scene.resolution)));
    resolution_->setToolTip(tr("full, half, third, quarter, or a fraction such as 2/3"));
    depth_->addItems({tr("8 bits"), tr("16 bits"), tr("32 bits (float)")});
    depth_->setCurrentIndex(
        static_cast<int>(std::distance(kDepths.begin(), std::ranges::find(kDepths, *scene.depth))));
    frames_->setText(QString::fromStdString(scene::frame_list_text(*scene.frames)));
    frames_->setToolTip(tr("Such as 0-99, 1-100x2 or 0-10,50"));
    rate_->setText(QString::fromStdString(frame_rate_text(*scene.rate)));
    rate_->setToolTip(tr("Frames per second, such as 25 or 30000/1001"));
    description_->setText(QString::fromStdString(scene.description));
    message_->setWordWrap(true);
    message_->hide();

    auto* form = new QFormLayout(this);
    form->setContentsMargins(4 * kGrid, 4 * kGrid, 4 * kGrid, 4 * kGrid);
    form->addRow(tr("&Width"), width_);
    form->addRow(tr("&Height"), height_);
    form->addRow(tr("Re&solution"), resolution_);
    form->addRow(tr("&Depth"), depth_);
    form->addRow(tr("&Frames"), frames_);
    form->addRow(tr("&Rate"), rate_);
    form->addRow(tr("D&escription"), description_);
    form->addRow(message_);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    form->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &SettingsDialog::take);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    setMinimumWidth(90 * kGrid);
}

void SettingsDialog::take() try {
    std::vector<int> frames = scene::parse_frame_list(frames_->text().trimmed().toStdString());
    const host::FrameRate rate = parse_frame_rate(rate_->text().trimmed().toStdString());
    const Resolution resolution = parse_resolution(resolution_->currentText().trimmed().toStdString());
    document_.begin_gesture(tr("Change scene settings"));
    document_.set_size({width_->value(), height_->value()});
    document_.set_resolution(resolution);
    document_.set_depth(kDepths.at(static_cast<std::size_t>(depth_->currentIndex())));
    document_.set_frames(std::move(frames));
    document_.set_rate(rate);
    document_.set_description(description_->text().simplified().toStdString());
    document_.end_gesture();
    accept();
} catch (const Failure& failure) {
    message_->setText(QString::fromUtf8(failure.what()));
    message_->show();
}

}  // namespace flumo::studio
