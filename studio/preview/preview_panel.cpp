#include "studio/preview/preview_panel.h"

#include <QComboBox>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <array>

#include "studio/theme/theme.h"

namespace flumo::studio {
namespace {

constexpr std::array kResolutions = {1, 2, 4};
constexpr std::array kZooms = {25, 50, 100, 200, 400, 800};

QString resolution_name(int divisor) {
    switch (divisor) {
        case 1:
            return PreviewPanel::tr("Full");
        case 2:
            return PreviewPanel::tr("Half");
        default:
            return PreviewPanel::tr("Quarter");
    }
}

}  // namespace

PreviewPanel::PreviewPanel(Preview& preview, QWidget* parent)
    : QWidget(parent),
      preview_(preview),
      view_(new PreviewView(this)),
      message_(new QLabel(this)),
      pixel_(new QLabel(this)),
      state_(new QLabel(this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(build_bar());
    message_->setObjectName(QStringLiteral("message"));
    message_->setWordWrap(true);
    message_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    message_->setMargin(2 * kGrid);
    message_->setAutoFillBackground(true);
    QPalette colours = message_->palette();
    colours.setColor(QPalette::Window, QColor(0xb0, 0x30, 0x28));
    colours.setColor(QPalette::WindowText, Qt::white);
    message_->setPalette(colours);
    message_->hide();
    layout->addWidget(message_);
    layout->addWidget(view_, 1);
    auto* line = new QHBoxLayout;
    line->setContentsMargins(2 * kGrid, kGrid, 2 * kGrid, kGrid);
    pixel_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    pixel_->setObjectName(QStringLiteral("pixel"));
    pixel_->setText(QStringLiteral(" "));
    line->addWidget(pixel_, 1);
    line->addWidget(state_);
    layout->addLayout(line);

    connect(&preview, &Preview::frame_shown, this, &PreviewPanel::show_frame);
    connect(&preview, &Preview::frame_failed, this, &PreviewPanel::show_failure);
    connect(view_, &PreviewView::zoom_changed, this, &PreviewPanel::show_zoom);
    connect(view_, &PreviewView::pixel_pointed, this, [this](std::optional<QPoint> pixel) {
        pointed_ = pixel;
        show_pixel();
    });
    show_zoom();
}

QComboBox* PreviewPanel::add_box(QHBoxLayout& bar, const QString& name, const QStringList& choices) {
    auto* box = new QComboBox(this);
    box->addItems(choices);
    box->setAccessibleName(name);
    box->setToolTip(name);
    bar.addWidget(box);
    return box;
}

QHBoxLayout* PreviewPanel::build_bar() {
    auto* bar = new QHBoxLayout;
    bar->setContentsMargins(2 * kGrid, kGrid, 2 * kGrid, kGrid);
    bar->setSpacing(kGrid);
    QStringList zooms = {tr("Fit")};
    for (const int percent : kZooms)
        zooms << tr("%1 %").arg(percent);
    zoom_ = add_box(*bar, tr("Zoom"), zooms);
    resolution_ = add_box(*bar, tr("Resolution"), {tr("Full"), tr("Half"), tr("Quarter")});
    channels_ = add_box(*bar, tr("Channels"),
                        {tr("RGB"), tr("Red"), tr("Green"), tr("Blue"), tr("Alpha"), tr("Luminance")});
    backdrop_ =
        add_box(*bar, tr("Under transparency"), {tr("Checkerboard"), tr("Black"), tr("Grey"), tr("White")});
    bar->addStretch(1);
    size_ = new QLabel(this);
    bar->addWidget(size_);
    connect(zoom_, &QComboBox::textActivated, this, &PreviewPanel::take_zoom);
    connect(resolution_, &QComboBox::currentIndexChanged, this,
            [this](int index) { preview_.set_finest(kResolutions.at(static_cast<std::size_t>(index))); });
    connect(channels_, &QComboBox::currentIndexChanged, this,
            [this](int index) { preview_.set_channels(static_cast<Channels>(index)); });
    connect(backdrop_, &QComboBox::currentIndexChanged, this,
            [this](int index) { view_->set_backdrop(static_cast<Backdrop>(index)); });
    return bar;
}

void PreviewPanel::choose_channels(int index) {
    channels_->setCurrentIndex(index);
}

void PreviewPanel::choose_resolution(int index) {
    resolution_->setCurrentIndex(index);
}

void PreviewPanel::choose_backdrop(int index) {
    backdrop_->setCurrentIndex(index);
}

void PreviewPanel::show_frame(const ShownFrame& frame) {
    message_->hide();
    view_->show_frame(frame);
    size_->setText(tr("%1 × %2, %3 bit")
                       .arg(frame.full_size().width)
                       .arg(frame.full_size().height)
                       .arg(static_cast<int>(frame.world->depth())));
    state_->setText(
        tr("Frame %1, %2").arg(frame.place.frame).arg(resolution_name(frame.place.divisor).toLower()));
    show_pixel();
}

void PreviewPanel::show_failure(const QString& why) {
    message_->setText(why);
    message_->show();
}

void PreviewPanel::show_pixel() {
    const ShownFrame& frame = preview_.shown();
    const bool is_inside = pointed_ && frame.world && pointed_->x() < frame.full_size().width &&
                           pointed_->y() < frame.full_size().height;
    if (!is_inside) {
        pixel_->setText(QStringLiteral(" "));
        return;
    }
    const int divisor = frame.place.divisor;
    pixel_->setText(QStringLiteral("%1, %2   %3")
                        .arg(pointed_->x())
                        .arg(pointed_->y())
                        .arg(pixel_text(*frame.world, pointed_->x() / divisor, pointed_->y() / divisor)));
}

// The box shows the zoom even where it is none of its choices.
void PreviewPanel::show_zoom() {
    const QString percent = tr("%1 %").arg(std::lround(view_->zoom() * 100));
    const QString text = view_->is_fitted() ? tr("Fit") : percent;
    const QSignalBlocker blocker(zoom_);
    if (zoom_->count() > 1 + static_cast<int>(kZooms.size())) zoom_->removeItem(zoom_->count() - 1);
    if (zoom_->findText(text) < 0) zoom_->addItem(text);
    zoom_->setCurrentText(text);
    zoom_->setToolTip(tr("Zoom: %1").arg(percent));
}

void PreviewPanel::take_zoom(const QString& text) {
    bool is_number = false;
    const double percent = text.section(QLatin1Char(' '), 0, 0).toDouble(&is_number);
    if (is_number) {
        view_->set_zoom(percent / 100);
    } else {
        view_->fit();
    }
}

}  // namespace flumo::studio
