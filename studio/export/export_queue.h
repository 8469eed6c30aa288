// Exports one after the other in the background.
#pragma once

#include <QObject>
#include <QString>
#include <atomic>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "job/session.h"
#include "studio/export/export_plan.h"

namespace flumo::studio {

enum class ExportState { kWaiting, kRunning, kDone, kFailed, kCancelled };

struct ExportItem {
    int id = 0;
    ExportPlan plan;
    ExportState state = ExportState::kWaiting;
    std::size_t frames_done = 0;
    std::optional<double> seconds_left;
    QString message;  ///< of one that failed, one line
};

/// On the UI thread; renders on a thread of its own.
class ExportQueue : public QObject {
    Q_OBJECT

  public:
    /// The session must outlive the queue.
    explicit ExportQueue(job::Session& session, QObject* parent = nullptr);
    /// Stops what runs, which then leaves nothing, and waits for the frame that is being rendered.
    ~ExportQueue() override;
    ExportQueue(const ExportQueue&) = delete;
    ExportQueue& operator=(const ExportQueue&) = delete;

    int add(ExportPlan plan);
    /// Ends with the frame that is being rendered.
    void cancel(int id);
    /// Takes those away that neither wait nor run.
    void remove_finished();

    const std::vector<ExportItem>& items() const { return items_; }
    /// Null for one that was taken away.
    const ExportItem* item(int id) const;
    bool is_busy() const;

  signals:
    /// One was added, or some were taken away.
    void list_changed();
    void item_changed(int id);

  private:
    struct Order;
    class Watcher;

    ExportItem* find(int id);
    void work(const std::stop_token& stop);
    void run(const Order& order, const std::stop_token& stop);
    /// From any thread.
    void report(int id, ExportState state, const QString& message = {});

    job::Session& session_;
    std::vector<ExportItem> items_;
    int next_id_ = 1;
    std::mutex mutex_;
    std::condition_variable_any changed_;
    std::deque<std::shared_ptr<Order>> orders_;
    std::vector<std::shared_ptr<Order>> known_;
    std::jthread thread_;  ///< the last member: it uses the others
};

}  // namespace flumo::studio
