#include "studio/export/export_queue.h"

#include <sys/resource.h>

#include <algorithm>
#include <exception>
#include <utility>

#include "studio/export/export_run.h"

namespace flumo::studio {
namespace {

// Linux applies it to the calling thread alone. The window goes first.
constexpr int kNice = 5;

bool is_finished(const ExportItem& item) {
    return item.state != ExportState::kWaiting && item.state != ExportState::kRunning;
}

}  // namespace

/// One export on its way to the thread.
struct ExportQueue::Order {
    Order(int order_id, job::RenderJob order_job) : id(order_id), job(std::move(order_job)) {}

    int id;
    job::RenderJob job;
    std::atomic<bool> cancelled = false;
};

/// Carries a job's events to the UI thread.
class ExportQueue::Watcher : public job::Observer {
  public:
    Watcher(ExportQueue& queue, int id) : queue_(queue), id_(id) {}

    void started(const job::ProgressState& state) override { show(state); }
    void frame_begun(int /*frame*/) override {}
    void frame_done(const job::FrameEvent& /*event*/, const job::ProgressState& state) override {
        show(state);
    }
    void ended(job::Ending /*ending*/, const job::ProgressState& /*state*/) override {}

  private:
    void show(const job::ProgressState& state) {
        const auto show_now = [&queue = queue_, id = id_, done = state.done(), left = state.seconds_left()] {
            ExportItem* const item = queue.find(id);
            if (!item) return;
            item->frames_done = done;
            item->seconds_left = left;
            emit queue.item_changed(id);
        };
        QMetaObject::invokeMethod(&queue_, show_now, Qt::QueuedConnection);
    }

    ExportQueue& queue_;
    int id_;
};

ExportQueue::ExportQueue(job::Session& session, QObject* parent)
    : QObject(parent), session_(session), thread_([this](const std::stop_token& stop) { work(stop); }) {}

ExportQueue::~ExportQueue() {
    thread_.request_stop();
    thread_.join();
}

int ExportQueue::add(ExportPlan plan) {
    const int id = next_id_++;
    auto order = std::make_shared<Order>(id, plan.job);
    items_.push_back({.id = id, .plan = std::move(plan), .state = {}, .seconds_left = {}, .message = {}});
    known_.push_back(order);
    emit list_changed();
    const std::scoped_lock lock(mutex_);
    orders_.push_back(std::move(order));
    changed_.notify_all();
    return id;
}

void ExportQueue::cancel(int id) {
    const auto order = std::ranges::find_if(known_, [id](const auto& known) { return known->id == id; });
    if (order != known_.end()) (*order)->cancelled = true;
    ExportItem* const item = find(id);
    if (!item || item->state != ExportState::kWaiting) return;
    item->state = ExportState::kCancelled;
    emit item_changed(id);
}

void ExportQueue::remove_finished() {
    std::erase_if(items_, is_finished);
    std::erase_if(known_, [this](const auto& order) { return !find(order->id); });
    emit list_changed();
}

ExportItem* ExportQueue::find(int id) {
    const auto found = std::ranges::find(items_, id, &ExportItem::id);
    return found == items_.end() ? nullptr : &*found;
}

const ExportItem* ExportQueue::item(int id) const {
    const auto found = std::ranges::find(items_, id, &ExportItem::id);
    return found == items_.end() ? nullptr : &*found;
}

bool ExportQueue::is_busy() const {
    return !std::ranges::all_of(items_, is_finished);
}

void ExportQueue::report(int id, ExportState state, const QString& message) {
    const auto show_now = [this, id, state, message] {
        ExportItem* const item = find(id);
        if (!item) return;
        item->state = state;
        item->message = message;
        emit item_changed(id);
    };
    QMetaObject::invokeMethod(this, show_now, Qt::QueuedConnection);
}

void ExportQueue::work(const std::stop_token& stop) {
    setpriority(PRIO_PROCESS, 0, kNice);
    while (true) {
        std::shared_ptr<Order> order;
        {
            std::unique_lock lock(mutex_);
            if (!changed_.wait(lock, stop, [this] { return !orders_.empty(); })) return;
            order = std::move(orders_.front());
            orders_.pop_front();
        }
        if (stop.stop_requested()) return;
        if (!order->cancelled) run(*order, stop);
    }
}

void ExportQueue::run(const Order& order, const std::stop_token& stop) try {
    report(order.id, ExportState::kRunning);
    Watcher watcher(*this, order.id);
    const auto stops = [&] { return order.cancelled || stop.stop_requested(); };
    const job::RunResult result = run_export(session_, order.job, stops, watcher);
    const bool done = result.ending == job::Ending::kDone;
    report(order.id, done ? ExportState::kDone : ExportState::kCancelled);
} catch (const std::exception& error) {
    report(order.id, ExportState::kFailed, QString::fromUtf8(error.what()));
}

}  // namespace flumo::studio
