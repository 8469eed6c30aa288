#include "job/pipeline.h"

#include <condition_variable>
#include <exception>
#include <map>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace flumo::job {
namespace {

enum class Outcome { kRendered, kNothing, kFailed };

struct Item {
    std::size_t position = 0;
    host::World world;
    Outcome outcome = Outcome::kNothing;
};

class Pipeline {
  public:
    Pipeline(const PipelineShape& shape, const PipelineWork& work)
        : shape_(shape), work_(work), free_(shape.worlds), rendering_(shape.render_threads) {}

    void run() {
        {
            std::vector<std::jthread> threads;
            for (std::size_t i = 0; i < shape_.encoder_threads; ++i)
                threads.emplace_back([this] { encode_all(); });
            for (std::size_t i = 1; i < shape_.render_threads; ++i)
                threads.emplace_back([this] { render_all(); });
            render_all();
        }
        if (error_) std::rethrow_exception(error_);
    }

  private:
    void render_all() {
        while (auto item = begin()) {
            try {
                item->outcome =
                    work_.render(item->position, item->world) ? Outcome::kRendered : Outcome::kNothing;
            } catch (...) {
                item->outcome = Outcome::kFailed;
                fail();
            }
            hand_over(std::move(*item));
        }
        const std::lock_guard lock(mutex_);
        --rendering_;
        changed_.notify_all();
    }

    // The lowest position that is not encoded yet always has a world: positions are given out in order and
    // only together with one. So encoding in order cannot wait for a frame that waits for a world.
    std::optional<Item> begin() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return !free_.empty() || error_; });
        if (error_ || next_ == work_.count || work_.stop()) return std::nullopt;
        Item item{next_++, std::move(free_.back()), Outcome::kNothing};
        free_.pop_back();
        return item;
    }

    void hand_over(Item item) {
        const std::lock_guard lock(mutex_);
        const std::size_t position = item.position;
        waiting_.emplace(position, std::move(item));
        changed_.notify_all();
    }

    void encode_all() {
        while (auto item = take()) {
            try {
                if (item->outcome == Outcome::kRendered) work_.encode(item->position, item->world);
            } catch (...) {
                item->outcome = Outcome::kFailed;
                fail();
            }
            give_back(std::move(*item));
        }
    }

    bool can_take() const {
        return !waiting_.empty() && (!shape_.in_order || waiting_.begin()->first == encoded_);
    }

    std::optional<Item> take() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return can_take() || (rendering_ == 0 && waiting_.empty()); });
        if (waiting_.empty()) return std::nullopt;
        Item item = std::move(waiting_.extract(waiting_.begin()).mapped());
        if (broken_) item.outcome = Outcome::kNothing;
        return item;
    }

    void give_back(Item item) {
        const std::lock_guard lock(mutex_);
        ++encoded_;
        if (shape_.in_order && item.outcome == Outcome::kFailed) broken_ = true;
        free_.push_back(std::move(item.world));
        changed_.notify_all();
    }

    void fail() {
        const std::lock_guard lock(mutex_);
        if (!error_) error_ = std::current_exception();
    }

    const PipelineShape shape_;
    const PipelineWork& work_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<host::World> free_;
    std::map<std::size_t, Item> waiting_;
    std::size_t rendering_;
    std::size_t next_ = 0;
    std::size_t encoded_ = 0;
    bool broken_ = false;
    std::exception_ptr error_;
};

}  // namespace

void run_pipeline(const PipelineShape& shape, const PipelineWork& work) {
    Pipeline(shape, work).run();
}

}  // namespace flumo::job
