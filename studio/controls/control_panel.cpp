#include "studio/controls/control_panel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScrollArea>
#include <QSettings>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "scene/control_needs.h"
#include "studio/controls/editors/metrics.h"
#include "studio/controls/group_section.h"

namespace flumo::studio {
namespace {

constexpr int kReasonsMilliseconds = 50;
constexpr int kWidth = 85 * metrics::kGrid;  // the least: rows of inner groups fit
const QString kFoldsKey = QStringLiteral("controls/unfolded");

// The sentence with the names that the panel shows instead of ids.
QString with_names(const std::string& sentence, const scene::ControlCatalog& catalog) {
    QString text = QString::fromStdString(sentence);
    for (const scene::Control& control : catalog.controls()) {
        if (control.is_group_mark()) continue;
        const QString id = QString::fromStdString(control.id);
        for (qsizetype at = text.indexOf(id); at >= 0; at = text.indexOf(id, at + 1)) {
            const bool whole = (at == 0 || !text[at - 1].isLetterOrNumber()) &&
                               (at + id.size() == text.size() || !text[at + id.size()].isLetterOrNumber());
            if (!whole) continue;
            const QString name = QStringLiteral("“%1”").arg(QString::fromStdString(control.name));
            text.replace(at, id.size(), name);
            at += name.size() - 1;
        }
    }
    return text;
}

bool is_hidden(const scene::Control& control) {
    return (control.definition.ui_flags & (PF_PUI_INVISIBLE | PF_PUI_NO_ECW_UI)) != 0;
}

}  // namespace

ControlPanel::ControlPanel(Document& document, QWidget* parent)
    : QWidget(parent),
      document_(document),
      search_(new QLineEdit(this)),
      changed_only_(new QToolButton(this)),
      scroll_(new QScrollArea(this)),
      hint_(new QLabel(this)) {
    QWidget* const tools = make_tools();
    auto* const content = new QWidget;
    auto* const rows = new QVBoxLayout(content);
    rows->setContentsMargins(0, 0, 0, metrics::kMargin);
    rows->setSpacing(0);
    make_rows(content);
    rows->addStretch(1);
    scroll_->setWidget(content);
    scroll_->setWidgetResizable(true);
    scroll_->setFrameShape(QFrame::NoFrame);
    scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll_->setFocusPolicy(Qt::NoFocus);

    hint_->setWordWrap(true);
    hint_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    hint_->setContentsMargins(metrics::kMargin, metrics::kGrid, metrics::kMargin, metrics::kGrid);
    hint_->setFixedHeight(3 * fontMetrics().lineSpacing() + 2 * metrics::kGrid);
    hint_->setTextFormat(Qt::PlainText);

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    auto* const line = new QFrame(this);
    line->setFrameShape(QFrame::HLine);
    line->setForegroundRole(QPalette::Mid);
    line->setFrameShadow(QFrame::Plain);
    column->addWidget(tools);
    column->addWidget(scroll_, 1);
    column->addWidget(line);
    column->addWidget(hint_);

    setMinimumWidth(kWidth);
    reasons_due_.setSingleShot(true);
    reasons_due_.setInterval(kReasonsMilliseconds);
    connect(&reasons_due_, &QTimer::timeout, this, &ControlPanel::refresh_reasons);
    connect_document();
    restore_folds();
    refresh_reasons();
    count_changes();
}

QSize ControlPanel::sizeHint() const {
    return {kWidth, 600};
}

QWidget* ControlPanel::make_tools() {
    auto* const tools = new QWidget(this);
    search_->setPlaceholderText(tr("Search controls"));
    search_->setAccessibleName(tr("Search controls"));
    search_->setClearButtonEnabled(true);
    search_->setObjectName(QStringLiteral("search"));
    changed_only_->setText(tr("Changed"));
    changed_only_->setToolTip(tr("Only controls that differ from their defaults"));
    changed_only_->setCheckable(true);
    changed_only_->setFocusPolicy(Qt::StrongFocus);
    auto* const more = new QToolButton(tools);
    more->setText(QStringLiteral("⋯"));
    more->setAccessibleName(tr("More about the controls"));
    more->setPopupMode(QToolButton::InstantPopup);
    more->setFocusPolicy(Qt::StrongFocus);
    auto* const menu = new QMenu(more);
    menu->addAction(tr("Unfold all groups"), this, [this] { unfold_all(true); });
    menu->addAction(tr("Fold all groups"), this, [this] { unfold_all(false); });
    menu->addSeparator();
    menu->addAction(tr("Reset all controls"), this, [this] {
        document_.begin_gesture(tr("reset all controls"));
        for (const auto& [index, row] : rows_)
            document_.reset(row->control());
        document_.end_gesture();
    });
    more->setMenu(menu);
    setTabOrder(search_, changed_only_);
    setTabOrder(changed_only_, more);

    auto* const row = new QHBoxLayout(tools);
    row->setContentsMargins(metrics::kGap, metrics::kGap, metrics::kGap, metrics::kGap);
    row->setSpacing(metrics::kGrid);
    row->addWidget(search_, 1);
    row->addWidget(changed_only_);
    row->addWidget(more);
    connect(search_, &QLineEdit::textChanged, this, &ControlPanel::filter);
    connect(changed_only_, &QToolButton::toggled, this, &ControlPanel::filter);
    return tools;
}

void ControlPanel::make_rows(QWidget* content) {
    for (const scene::Control& control : document_.catalog().controls()) {
        if (control.kind == scene::ControlKind::kGroupStart)
            open_group(control, content);
        else if (control.kind == scene::ControlKind::kGroupEnd)
            open_groups_.pop_back();
        else
            add_row(control, content);
    }
}

void ControlPanel::place(QWidget* widget, QWidget* content) {
    if (open_groups_.empty())
        content->layout()->addWidget(widget);
    else
        groups_[open_groups_.back()].section->add(widget);
}

void ControlPanel::open_group(const scene::Control& mark, QWidget* content) {
    const int depth = static_cast<int>(open_groups_.size());
    auto* const section = new GroupSection(QString::fromStdString(mark.name), depth, content);
    place(section, content);
    const int parent = open_groups_.empty() ? -1 : static_cast<int>(open_groups_.back());
    open_groups_.push_back(groups_.size());
    groups_.push_back({section, &mark, parent, {}});
    connect(section, &GroupSection::toggled, this, &ControlPanel::store_folds);
}

void ControlPanel::add_row(const scene::Control& control, QWidget* content) {
    auto* const row = new ControlRow(document_, control, content);
    place(row, content);
    rows_[control.index] = row;
    for (const std::size_t group : open_groups_)
        groups_[group].rows.push_back(row);
    connect(row, &ControlRow::failed, this, &ControlPanel::failed);
    connect(row, &ControlRow::pointed_at, this, [this, row] {
        pointed_at_ = row;
        hint_->setText(row->hint());
    });
    row->setVisible(!is_hidden(control));
}

void ControlPanel::connect_document() {
    connect(&document_, &Document::control_changed, this, [this](int index) {
        const auto row = rows_.find(index);
        if (row != rows_.end()) row->second->refresh();
        if (!reasons_due_.isActive()) reasons_due_.start();
    });
    connect(&document_, &Document::replaced, this, &ControlPanel::refresh_all);
    connect(&document_, &Document::frame_changed, this, [this] {
        for (const auto& [index, row] : rows_) {
            if (document_.is_animated(row->control())) row->refresh();
        }
    });
}

void ControlPanel::refresh_all() {
    for (const auto& [index, row] : rows_)
        row->refresh();
    refresh_reasons();
}

void ControlPanel::refresh_reasons() {
    const scene::ControlCatalog& catalog = document_.catalog();
    for (const auto& [index, row] : rows_) {
        const std::string why = scene::why_without_effect(row->control(), document_.scene().tracks, catalog);
        row->set_reason(why.empty() ? QString() : with_names(why, catalog) + u'.');
    }
    if (pointed_at_) hint_->setText(pointed_at_->hint());
    count_changes();
}

void ControlPanel::count_changes() {
    for (const Group& group : groups_) {
        group.section->set_changed_count(
            static_cast<int>(std::ranges::count_if(group.rows, &ControlRow::is_changed)));
    }
    if (changed_only_->isChecked()) filter();
}

void ControlPanel::filter() {
    const QString text = search_->text().trimmed();
    const bool changed = changed_only_->isChecked();
    const bool all = text.isEmpty() && !changed;
    const auto wanted = [&](const ControlRow* row) {
        return !is_hidden(row->control()) && (!changed || row->is_changed()) && row->matches(text);
    };
    for (const auto& [index, row] : rows_)
        row->setVisible(wanted(row));
    for (const Group& group : groups_) {
        group.section->setVisible(all || std::ranges::any_of(group.rows, wanted));
        if (!all) group.section->set_open(true);
    }
    if (all) restore_folds();
}

ControlRow* ControlPanel::row(const scene::Control& control) const {
    const auto found = rows_.find(control.index);
    return found == rows_.end() ? nullptr : found->second;
}

void ControlPanel::reveal(const scene::Control& control) {
    ControlRow* const wanted = row(control);
    if (!wanted) return;
    for (const Group& group : groups_) {
        if (std::ranges::find(group.rows, wanted) != group.rows.end()) group.section->set_open(true);
    }
    store_folds();
    wanted->editor().main_widget()->setFocus();
    scroll_->ensureWidgetVisible(wanted);
}

void ControlPanel::focus_search() {
    search_->setFocus();
    search_->selectAll();
}

void ControlPanel::unfold_all(bool open) {
    for (const Group& group : groups_)
        group.section->set_open(open);
    store_folds();
}

bool ControlPanel::starts_open(const Group& group) const {
    return (group.mark->definition.flags & PF_ParamFlag_START_COLLAPSED) == 0;
}

void ControlPanel::restore_folds() {
    const QSettings settings;
    const bool stored = settings.contains(kFoldsKey);
    const QStringList open = settings.value(kFoldsKey).toStringList();
    for (const Group& group : groups_) {
        const bool listed = open.contains(QString::fromStdString(group.mark->id));
        group.section->set_open(stored ? listed : starts_open(group));
    }
}

void ControlPanel::store_folds() const {
    if (!search_->text().trimmed().isEmpty() || changed_only_->isChecked()) return;
    QStringList open;
    for (const Group& group : groups_) {
        if (group.section->is_open()) open += QString::fromStdString(group.mark->id);
    }
    QSettings().setValue(kFoldsKey, open);
}

}  // namespace flumo::studio
