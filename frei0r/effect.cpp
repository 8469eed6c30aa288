#include "frei0r/effect.h"

#include "base/failure.h"
#include "frei0r/linked_effect.h"

namespace flumo::frei0r {

Effect::~Effect() {
    if (thread_) thread_->run([this] { host_.reset(); });
}

void Effect::run(const std::function<void(host::Host&)>& work) {
    thread().run([&] { work(started_host()); });
}

WorkThread& Effect::thread() {
    const std::lock_guard lock(mutex_);
    if (!thread_) thread_ = std::make_unique<WorkThread>();
    return *thread_;
}

// Tried once: what a machine lacks, it lacks on the next frame too.
host::Host& Effect::started_host() {
    if (!host_ && why_not_.empty()) {
        module_ = std::make_unique<host::Module>(linked_effect());
        auto host = std::make_unique<host::Host>(*module_);
        try {
            host->start();
            host_ = std::move(host);
        } catch (const host::HostError& error) {
            why_not_ = error.what();
        }
    }
    if (!host_) throw Failure(FailureKind::kNoOpenGl, "the effect found no usable OpenGL 3.3: " + why_not_);
    return *host_;
}

}  // namespace flumo::frei0r
