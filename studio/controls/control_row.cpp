#include "studio/controls/control_row.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QGridLayout>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QToolButton>
#include <algorithm>

#include "studio/controls/editors/gradient_editor.h"
#include "studio/controls/editors/make_editor.h"
#include "studio/controls/editors/metrics.h"
#include "studio/controls/row_icons.h"

namespace flumo::studio {
namespace {

constexpr int kMarkWidth = 3;  // of the bar at a changed control, in pixels
constexpr double kDimmed = 0.5;

QColor mixed(const QColor& a, const QColor& b, double share_of_a) {
    const auto mix = [&](int x, int y) { return static_cast<int>(x * share_of_a + y * (1 - share_of_a)); };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

QToolButton* small_button(QWidget* parent) {
    auto* const button = new QToolButton(parent);
    button->setAutoRaise(true);
    button->setFixedSize(metrics::kSmallButton, metrics::kSmallButton);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

}  // namespace

ControlRow::ControlRow(Document& document, const scene::Control& control, QWidget* parent)
    : QWidget(parent),
      document_(document),
      editor_(make_editor(control, document.host()).release()),
      keyframe_(small_button(this)),
      label_(new QLabel(QString::fromStdString(control.name), this)),
      reset_(small_button(this)) {
    const QString name = QString::fromStdString(control.name);
    editor_->setParent(this);
    label_->setWordWrap(true);
    label_->setBuddy(editor_->main_widget());
    reset_->setIcon(reset_icon(palette()));
    reset_->setToolTip(tr("Back to the default"));
    reset_->setAccessibleName(tr("Reset %1").arg(name));
    keyframe_->setAccessibleName(tr("Keyframe of %1").arg(name));
    keyframe_->setVisible(scene::takes_keyframes(control));
    const bool disabled = (control.definition.ui_flags & PF_PUI_DISABLED) != 0;
    editor_->setEnabled(!disabled);
    lay_out();
    connect_editor();
    refresh();
}

void ControlRow::lay_out() {
    auto* const grid = new QGridLayout(this);
    grid->setContentsMargins(metrics::kGrid, 2, 2, 2);
    grid->setHorizontalSpacing(metrics::kGrid);
    grid->setVerticalSpacing(2);
    QSizePolicy keeps_place = reset_->sizePolicy();
    keeps_place.setRetainSizeWhenHidden(true);
    reset_->setSizePolicy(keeps_place);
    keyframe_->setSizePolicy(keeps_place);
    grid->addWidget(keyframe_, 0, 0, Qt::AlignVCenter);
    grid->addWidget(reset_, 0, 3, Qt::AlignVCenter);
    if (control().kind == scene::ControlKind::kArbitrary) {
        grid->addWidget(label_, 0, 1, 1, 2);
        grid->addWidget(editor_, 1, 1, 1, 2);
    } else {
        label_->setFixedWidth(metrics::kLabelWidth);
        grid->addWidget(label_, 0, 1);
        grid->addWidget(editor_, 0, 2);
        grid->setRowMinimumHeight(0, metrics::kRowHeight);
    }
    grid->setColumnStretch(2, 1);
    setTabOrder(keyframe_, editor_);
    setTabOrder(editor_, reset_);
}

void ControlRow::connect_editor() {
    const QString name = QString::fromStdString(control().name);
    connect(editor_, &ControlEditor::begun, this, [this, name] { document_.begin_gesture(name); });
    connect(editor_, &ControlEditor::edited, this,
            [this](const scene::ControlValue& value) { document_.set_value(control(), value); });
    connect(editor_, &ControlEditor::ended, this, [this] { document_.end_gesture(); });
    connect(reset_, &QToolButton::clicked, this, [this] { document_.reset(control()); });
    connect(keyframe_, &QToolButton::clicked, this, &ControlRow::toggle_keyframe);
    if (auto* const gradient = qobject_cast<GradientEditor*>(editor_))
        connect(gradient, &GradientEditor::failed, this, &ControlRow::failed);
    for (QWidget* const child : findChildren<QWidget*>())
        child->installEventFilter(this);
}

bool ControlRow::has_keyframe_now() const {
    const std::vector<scene::Keyframe> keyframes = document_.keyframes(control());
    return std::ranges::any_of(keyframes, [this](const scene::Keyframe& keyframe) {
        return keyframe.frame == document_.current_frame();
    });
}

void ControlRow::toggle_keyframe() {
    if (!document_.is_animated(control()))
        document_.set_animated(control(), true);
    else if (has_keyframe_now())
        document_.remove_keyframe(control(), document_.current_frame());
    else
        document_.add_keyframe(control(), document_.current_frame());
}

void ControlRow::show_keyframe() {
    const bool animated = document_.is_animated(control());
    const bool here = animated && has_keyframe_now();
    keyframe_->setIcon(keyframe_icon(palette(), animated, here));
    keyframe_->setToolTip(!animated ? tr("Animate: make a keyframe at this frame")
                          : here    ? tr("Remove the keyframe at this frame")
                                    : tr("Make a keyframe at this frame"));
}

void ControlRow::refresh() {
    editor_->show_value(document_.value_now(control()));
    changed_ = document_.is_set(control());
    reset_->setVisible(changed_);
    if (scene::takes_keyframes(control())) show_keyframe();
    update();
}

void ControlRow::set_reason(const QString& reason) {
    if (reason == reason_) return;
    reason_ = reason;
    setToolTip(reason);
    editor_->main_widget()->setAccessibleDescription(reason);
    show_dimmed();
}

// Dimmed, not disabled: a look may be prepared before it is switched on.
void ControlRow::show_dimmed() {
    dimmed_from_ = QApplication::palette().cacheKey();
    QPalette colors;
    if (!reason_.isEmpty()) {
        const QPalette usual = QApplication::palette();
        colors = usual;
        for (const QPalette::ColorRole role :
             {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::Highlight})
            colors.setColor(role, mixed(usual.color(role), usual.color(QPalette::Window), kDimmed));
    }
    setPalette(colors);
}

void ControlRow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange) return;
    if (!reason_.isEmpty() && dimmed_from_ != QApplication::palette().cacheKey()) show_dimmed();
    reset_->setIcon(reset_icon(palette()));
    if (scene::takes_keyframes(control())) show_keyframe();
}

bool ControlRow::matches(const QString& text) const {
    QStringList words{QString::fromStdString(control().name), QString::fromStdString(control().id)};
    for (const std::string& group : control().group)
        words += QString::fromStdString(group);
    return words.join(u' ').contains(text, Qt::CaseInsensitive);
}

QString ControlRow::hint() const {
    const QString about = QStringLiteral("%1: %2").arg(
        QString::fromStdString(control().id), QString::fromStdString(scene::expected_value(control())));
    return reason_.isEmpty() ? about : about + u'\n' + reason_;
}

void ControlRow::paintEvent(QPaintEvent* /*event*/) {
    if (!changed_) return;
    QPainter painter(this);
    painter.fillRect(0, 2, kMarkWidth, height() - 4, palette().color(QPalette::Highlight));
}

void ControlRow::enterEvent(QEnterEvent* event) {
    QWidget::enterEvent(event);
    emit pointed_at();
}

bool ControlRow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn) emit pointed_at();
    if (event->type() == QEvent::FocusOut) editor_->finish();
    return QWidget::eventFilter(watched, event);
}

void ControlRow::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu(this);
    QAction* const back = menu.addAction(tr("Reset"));
    back->setEnabled(changed_);
    connect(back, &QAction::triggered, this, [this] { document_.reset(control()); });
    if (scene::takes_keyframes(control())) {
        menu.addSeparator();
        QAction* const animate = menu.addAction(tr("Animate"));
        animate->setCheckable(true);
        animate->setChecked(document_.is_animated(control()));
        connect(animate, &QAction::triggered, this,
                [this](bool on) { document_.set_animated(control(), on); });
    }
    menu.exec(event->globalPos());
}

}  // namespace flumo::studio
