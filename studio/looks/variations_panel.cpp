#include "studio/looks/variations_panel.h"

#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSlider>
#include <QToolButton>
#include <QVBoxLayout>

#include "scene/control_needs.h"
#include "scene/variation.h"
#include "studio/theme/theme.h"

namespace flumo::studio {
namespace {

constexpr uint32_t kCount = 15;
constexpr int kUsualStrength = 30;  // percent

// Choices and switches change a look into another one; layers are files.
bool can_vary(const scene::Control& control) {
    using enum scene::ControlKind;
    return control.kind == kSlider || control.kind == kFloatSlider || control.kind == kAngle ||
           control.kind == kArbitrary;
}

}  // namespace

VariationsPanel::VariationsPanel(Document& document, Thumbnailer& thumbnailer, QWidget* parent)
    : QWidget(parent),
      document_(document),
      strength_(new QSlider(Qt::Horizontal, this)),
      groups_(new QToolButton(this)),
      grid_(new LookGrid(thumbnailer, this)) {
    strength_->setRange(1, 100);
    strength_->setValue(kUsualStrength);
    strength_->setAccessibleName(tr("Strength of variations"));
    strength_->setToolTip(tr("How far variations go from the look"));
    groups_->setText(tr("What varies"));
    groups_->setPopupMode(QToolButton::InstantPopup);
    groups_->setFocusPolicy(Qt::StrongFocus);
    auto* const menu = new QMenu(groups_);
    add_groups(*menu);
    groups_->setMenu(menu);
    auto* const again = new QPushButton(tr("&Vary again"), this);
    again->setObjectName(QStringLiteral("again"));
    grid_->setAccessibleName(tr("Variations"));

    auto* const strength_row = new QHBoxLayout;
    auto* const label = new QLabel(tr("&Strength"), this);
    label->setBuddy(strength_);
    strength_row->setSpacing(2 * kGrid);
    strength_row->addWidget(label);
    strength_row->addWidget(strength_, 1);
    auto* const button_row = new QHBoxLayout;
    button_row->setSpacing(2 * kGrid);
    button_row->addWidget(groups_, 1);
    button_row->addWidget(again, 1);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(2 * kGrid, 2 * kGrid, 2 * kGrid, 0);
    column->setSpacing(2 * kGrid);
    column->addLayout(strength_row);
    column->addLayout(button_row);
    column->addWidget(grid_, 1);

    connect(again, &QPushButton::clicked, this, &VariationsPanel::vary_again);
    connect(strength_, &QSlider::valueChanged, this, &VariationsPanel::show_variations);
    connect(grid_, &LookGrid::taken, this, &VariationsPanel::take);
}

void VariationsPanel::add_groups(QMenu& menu) {
    for (const scene::Control& control : document_.catalog().controls()) {
        if (control.kind != scene::ControlKind::kGroupStart) continue;
        QAction* const action = menu.addAction(QString::fromStdString(control.name));
        action->setCheckable(true);
        action->setChecked(true);
        connect(action, &QAction::toggled, this, &VariationsPanel::show_variations);
    }
}

// Those of the chosen groups that have an effect in this look. A control belongs to its innermost group.
std::vector<const scene::Control*> VariationsPanel::controls() const {
    QStringList chosen;
    for (const QAction* const action : groups_->menu()->actions()) {
        if (action->isChecked()) chosen += action->text();
    }
    std::vector<const scene::Control*> controls;
    for (const scene::Control& control : document_.catalog().controls()) {
        const bool wanted = can_vary(control) && !control.group.empty() &&
                            chosen.contains(QString::fromStdString(control.group.back()));
        if (wanted && scene::why_without_effect(control, base_->scene.tracks, document_.catalog()).empty())
            controls.push_back(&control);
    }
    return controls;
}

void VariationsPanel::vary_again() {
    auto base = std::make_shared<SceneState>(*document_.state());
    base->scene.resolution = Resolution{};
    base_ = std::move(base);
    ++seed_;
    show_variations();
}

void VariationsPanel::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (!base_) vary_again();
}

void VariationsPanel::show_variations() {
    if (!base_) return;
    const std::vector<const scene::Control*> varied = controls();
    const scene::VariationSettings settings{varied, strength_->value() / 100.0, seed_};
    const int frame = document_.current_frame();
    std::vector<GridLook> looks{{tr("This look"), {}, base_, frame}};
    for (uint32_t i = 0; i < kCount; ++i) {
        scene::Variation variation =
            scene::vary(base_->scene.tracks, settings, i,
                        [this](const scene::Control& control) { return document_.default_value(control); });
        QStringList about;
        for (const std::string& change : variation.changes)
            about += QString::fromStdString(change);
        auto state = std::make_shared<SceneState>(*base_);
        state->scene.tracks = std::move(variation.tracks);
        looks.push_back({tr("Variation %1").arg(i + 1), about.join(u'\n'), std::move(state), frame});
    }
    grid_->show_looks(std::move(looks));
}

void VariationsPanel::take(int place) {
    const GridLook& look = grid_->looks().at(static_cast<std::size_t>(place));
    scene::Scene scene;
    scene.description = look.state->scene.description;
    scene.tracks = look.state->scene.tracks;
    document_.replace(std::move(scene), look.name);
}

}  // namespace flumo::studio
