#include "studio/controls/group_section.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

#include "studio/controls/editors/metrics.h"

namespace flumo::studio {

GroupSection::GroupSection(const QString& name, int depth, QWidget* parent)
    : QWidget(parent),
      header_(new QToolButton(this)),
      count_(new QLabel(header_)),
      content_(new QWidget(this)),
      rows_(new QVBoxLayout(content_)) {
    header_->setText(name);
    header_->setAccessibleName(tr("Group %1").arg(name));
    header_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    header_->setAutoRaise(true);
    header_->setCheckable(true);
    header_->setFocusPolicy(Qt::StrongFocus);
    header_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    header_->setMinimumHeight(metrics::kRowHeight);
    QFont bold = header_->font();
    bold.setWeight(depth == 0 ? QFont::Bold : QFont::DemiBold);
    header_->setFont(bold);
    count_->setForegroundRole(QPalette::Link);
    auto* const over = new QHBoxLayout(header_);
    over->setContentsMargins(0, 0, metrics::kGap, 0);
    over->addStretch(1);
    over->addWidget(count_);

    rows_->setContentsMargins(depth == 0 ? 0 : metrics::kGrid, 0, 0, metrics::kGrid);
    rows_->setSpacing(0);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(header_);
    column->addWidget(content_);
    connect(header_, &QToolButton::clicked, this, [this](bool open) {
        show_state();
        emit toggled(open);
    });
    set_open(true);
}

void GroupSection::add(QWidget* widget) {
    rows_->addWidget(widget);
}

void GroupSection::set_open(bool open) {
    header_->setChecked(open);
    show_state();
}

bool GroupSection::is_open() const {
    return header_->isChecked();
}

void GroupSection::set_changed_count(int count) {
    changed_ = count;
    show_state();
}

void GroupSection::show_state() {
    const bool open = header_->isChecked();
    header_->setArrowType(open ? Qt::DownArrow : Qt::RightArrow);
    content_->setVisible(open);
    count_->setText(!open && changed_ > 0 ? tr("%1 changed").arg(changed_) : QString());
}

}  // namespace flumo::studio
