#include "studio/export/queue_view.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>
#include <cmath>

#include "studio/theme/theme.h"

namespace flumo::studio {
namespace {

constexpr int kGap = 2 * kGrid;
constexpr int kBarWidth = 30 * kGrid;

QString state_text(const ExportItem& item) {
    switch (item.state) {
        case ExportState::kWaiting:
            return QObject::tr("Waiting");
        case ExportState::kRunning: {
            const QString done =
                QObject::tr("%1 of %2 frames").arg(item.frames_done).arg(item.plan.job.frames.size());
            if (!item.seconds_left) return done;
            return QObject::tr("%1, %2 s left").arg(done).arg(std::ceil(*item.seconds_left));
        }
        case ExportState::kDone:
            return QObject::tr("Done");
        case ExportState::kFailed:
            return QObject::tr("Failed: %1").arg(item.message);
        case ExportState::kCancelled:
            return QObject::tr("Cancelled; nothing was written");
    }
    return {};
}

}  // namespace

/// One export.
class QueueView::Row : public QWidget {
  public:
    Row(ExportQueue& queue, const ExportItem& item, QWidget* parent)
        : QWidget(parent),
          summary_(new QLabel(this)),
          state_(new QLabel(this)),
          bar_(new QProgressBar(this)),
          cancel_(new QPushButton(tr("Cancel"), this)),
          open_(new QPushButton(tr("Show files"), this)) {
        const QString summary = QString::fromStdString(item.plan.summary);
        summary_->setText(summary);
        summary_->setWordWrap(true);
        summary_->setTextInteractionFlags(Qt::TextSelectableByMouse);
        state_->setWordWrap(true);
        state_->setForegroundRole(QPalette::PlaceholderText);
        bar_->setFixedWidth(kBarWidth);
        bar_->setRange(0, static_cast<int>(item.plan.job.frames.size()));
        bar_->setAccessibleName(tr("Progress of %1").arg(summary));
        auto* const copy = new QPushButton(tr("Copy as command"), this);
        auto* const texts = new QVBoxLayout;
        texts->setSpacing(2);
        texts->addWidget(summary_);
        texts->addWidget(state_);
        auto* const row = new QHBoxLayout(this);
        row->setContentsMargins(0, kGap / 2, 0, kGap / 2);
        row->setSpacing(kGap);
        row->addLayout(texts, 1);
        row->addWidget(bar_);
        row->addWidget(copy);
        row->addWidget(open_);
        row->addWidget(cancel_);
        connect(cancel_, &QPushButton::clicked, this, [&queue, id = item.id] { queue.cancel(id); });
        connect(copy, &QPushButton::clicked, this, [command = QString::fromStdString(item.plan.command)] {
            QApplication::clipboard()->setText(command);
        });
        const QString folder = QString::fromStdString(item.plan.job.path_of(0).parent_path().string());
        connect(open_, &QPushButton::clicked, this,
                [folder] { QDesktopServices::openUrl(QUrl::fromLocalFile(folder)); });
        show_item(item);
    }

    void show_item(const ExportItem& item) {
        const bool runs = item.state == ExportState::kRunning;
        const bool waits = item.state == ExportState::kWaiting;
        state_->setText(state_text(item));
        bar_->setValue(static_cast<int>(item.state == ExportState::kDone ? item.plan.job.frames.size()
                                                                         : item.frames_done));
        bar_->setVisible(runs || waits);
        cancel_->setVisible(runs || waits);
        open_->setVisible(item.state == ExportState::kDone);
    }

  private:
    QLabel* summary_;
    QLabel* state_;
    QProgressBar* bar_;
    QPushButton* cancel_;
    QPushButton* open_;
};

QueueView::QueueView(ExportQueue& queue, QWidget* parent)
    : QWidget(parent), queue_(queue), rows_(new QVBoxLayout(this)) {
    rows_->setContentsMargins(kGap, kGap, kGap, kGap);
    rows_->setSpacing(0);
    rows_->addStretch(1);
    connect(&queue, &ExportQueue::list_changed, this, &QueueView::rebuild);
    connect(&queue, &ExportQueue::item_changed, this, &QueueView::show_item);
    rebuild();
}

void QueueView::rebuild() {
    std::erase_if(shown_, [this](const auto& entry) {
        if (queue_.item(entry.first)) return false;
        entry.second->deleteLater();
        return true;
    });
    for (const ExportItem& item : queue_.items()) {
        if (shown_.contains(item.id)) continue;
        auto* const row = new Row(queue_, item, this);
        rows_->insertWidget(rows_->count() - 1, row);
        shown_[item.id] = row;
    }
}

void QueueView::show_item(int id) {
    const auto row = shown_.find(id);
    const ExportItem* const item = queue_.item(id);
    if (row != shown_.end() && item) row->second->show_item(*item);
}

}  // namespace flumo::studio
