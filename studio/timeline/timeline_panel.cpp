#include "studio/timeline/timeline_panel.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <numeric>

#include "base/failure.h"
#include "base/frame_rate.h"
#include "studio/theme/theme.h"

namespace flumo::studio {
namespace {

constexpr int kHighestFrame = 499999;

// Hours, minutes, seconds and frames, counted at the rounded rate without dropped numbers.
QString time_code(int frame, const host::FrameRate& rate) {
    const int per_second = std::max(1, (rate.num + rate.den / 2) / rate.den);
    const int counted = std::abs(frame);
    const int seconds = counted / per_second;
    const auto two = [](int number) { return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0')); };
    return (frame < 0 ? QStringLiteral("-") : QString()) + two(seconds / 3600) + QLatin1Char(':') +
           two(seconds / 60 % 60) + QLatin1Char(':') + two(seconds % 60) + QLatin1Char(':') +
           two(counted % per_second);
}

}  // namespace

TimelinePanel::TimelinePanel(Document& document, Preview& preview, QWidget* parent)
    : QWidget(parent),
      document_(document),
      player_(new Player(document, preview, this)),
      view_(new TimelineView(document, preview, this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(build_bar());
    layout->addWidget(view_, 1);
    connect(&document, &Document::frame_changed, this, &TimelinePanel::show_frame);
    connect(&document, &Document::settings_changed, this, &TimelinePanel::show_settings);
    connect(view_, &TimelineView::selection_changed, this, &TimelinePanel::show_selection);
    connect(player_, &Player::playing_changed, this, [this](bool playing) {
        play_->setIcon(icon(playing ? Icon::kPause : Icon::kPlay));
        play_->setToolTip(playing ? tr("Pause") : tr("Play"));
    });
    show_settings();
    show_selection();
}

QToolButton* TimelinePanel::add_button(QHBoxLayout& bar, Icon shape, const QString& name) {
    auto* button = new QToolButton(this);
    button->setIcon(icon(shape));
    button->setToolTip(name);
    button->setAccessibleName(name);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    bar.addWidget(button);
    return button;
}

QSpinBox* TimelinePanel::add_number(QHBoxLayout& bar, const QString& name) {
    auto* number = new QSpinBox(this);
    number->setRange(-kHighestFrame, kHighestFrame);
    number->setToolTip(name);
    number->setAccessibleName(name);
    number->setKeyboardTracking(false);
    number->setButtonSymbols(QAbstractSpinBox::NoButtons);
    number->setFixedWidth(14 * kGrid);
    bar.addWidget(number);
    return number;
}

QHBoxLayout* TimelinePanel::build_bar() {
    auto* bar = new QHBoxLayout;
    bar->setContentsMargins(2 * kGrid, kGrid, 2 * kGrid, kGrid);
    bar->setSpacing(kGrid);
    connect(add_button(*bar, Icon::kFirst, tr("First frame")), &QToolButton::clicked, player_,
            &Player::go_to_first);
    play_ = add_button(*bar, Icon::kPlay, tr("Play"));
    connect(play_, &QToolButton::clicked, player_, &Player::toggle);
    connect(add_button(*bar, Icon::kLast, tr("Last frame")), &QToolButton::clicked, player_,
            &Player::go_to_last);
    QToolButton* const loop = add_button(*bar, Icon::kLoop, tr("Loop"));
    loop->setCheckable(true);
    loop->setChecked(player_->loops());
    connect(loop, &QToolButton::toggled, player_, &Player::set_loops);
    frame_ = add_number(*bar, tr("Current frame"));
    connect(frame_, &QSpinBox::valueChanged, &document_, &Document::set_current_frame);
    time_ = new QLabel(this);
    bar->addWidget(time_);
    bar->addStretch(1);
    add_key_ =
        add_button(*bar, Icon::kAddKey, tr("Keyframe of the chosen row at the current frame (Insert)"));
    connect(add_key_, &QToolButton::clicked, view_, &TimelineView::add_keyframe);
    delete_key_ = add_button(*bar, Icon::kDeleteKey, tr("Delete the selected keyframes (Delete)"));
    connect(delete_key_, &QToolButton::clicked, view_, &TimelineView::delete_keyframes);
    interpolation_ = new QComboBox(this);
    interpolation_->addItems({tr("Linear"), tr("Hold"), tr("Ease")});
    interpolation_->setAccessibleName(tr("From the selected keyframes to the next ones"));
    interpolation_->setToolTip(interpolation_->accessibleName());
    connect(interpolation_, &QComboBox::activated, this,
            [this](int index) { view_->set_interpolation(static_cast<scene::Interpolation>(index)); });
    bar->addWidget(interpolation_);
    bar->addSpacing(2 * kGrid);
    first_ = add_number(*bar, tr("First frame of the scene"));
    bar->addWidget(new QLabel(QStringLiteral("–"), this));
    last_ = add_number(*bar, tr("Last frame of the scene"));
    connect(first_, &QSpinBox::editingFinished, this, &TimelinePanel::take_range);
    connect(last_, &QSpinBox::editingFinished, this, &TimelinePanel::take_range);
    rate_ = new QComboBox(this);
    rate_->setEditable(true);
    rate_->setInsertPolicy(QComboBox::NoInsert);
    for (const char* const rate : {"24", "24000/1001", "25", "30", "30000/1001", "50", "60"})
        rate_->addItem(QLatin1String(rate));
    rate_->setAccessibleName(tr("Frames per second"));
    rate_->setToolTip(rate_->accessibleName());
    rate_->setMaximumWidth(25 * kGrid);
    connect(rate_, &QComboBox::textActivated, this, &TimelinePanel::take_rate);
    connect(rate_->lineEdit(), &QLineEdit::editingFinished, this, &TimelinePanel::take_rate);
    bar->addWidget(rate_);
    return bar;
}

void TimelinePanel::show_frame() {
    const QSignalBlocker blocker(frame_);
    frame_->setValue(document_.current_frame());
    time_->setText(time_code(document_.current_frame(), *document_.scene().rate));
}

void TimelinePanel::show_settings() {
    const QSignalBlocker first(first_);
    const QSignalBlocker last(last_);
    first_->setValue(document_.first_frame());
    last_->setValue(document_.last_frame());
    rate_->setCurrentText(QString::fromStdString(frame_rate_text(*document_.scene().rate)));
    show_frame();
}

void TimelinePanel::show_selection() {
    const bool has_row = view_->current_control() != nullptr;
    add_key_->setEnabled(has_row);
    delete_key_->setEnabled(has_row);
    interpolation_->setEnabled(has_row);
    if (view_->selected().empty()) return;
    const auto [index, frame] = *view_->selected().begin();
    for (const scene::Keyframe& keyframe :
         document_.keyframes(document_.catalog().controls().at(static_cast<std::size_t>(index) - 1))) {
        if (keyframe.frame == frame) interpolation_->setCurrentIndex(static_cast<int>(keyframe.to_next));
    }
}

// Contiguous frames, whatever the list was before; an unchanged range leaves it.
void TimelinePanel::take_range() {
    const int first = first_->value();
    const int last = std::max(first, last_->value());
    if (first == document_.first_frame() && last == document_.last_frame()) return;
    std::vector<int> frames(static_cast<std::size_t>(last - first) + 1);
    std::iota(frames.begin(), frames.end(), first);
    document_.set_frames(std::move(frames));
    document_.set_current_frame(std::clamp(document_.current_frame(), first, last));
    show_settings();
}

void TimelinePanel::take_rate() try {
    const host::FrameRate rate = parse_frame_rate(rate_->currentText().trimmed().toStdString());
    const host::FrameRate& present = *document_.scene().rate;
    if (rate.num != present.num || rate.den != present.den) document_.set_rate(rate);
} catch (const Failure&) {
    show_settings();
}

}  // namespace flumo::studio
