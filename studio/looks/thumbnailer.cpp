#include "studio/looks/thumbnailer.h"

#include <sys/resource.h>

#include <QCryptographicHash>
#include <exception>
#include <system_error>
#include <utility>

#include "scene/scene_text.h"
#include "studio/preview/display.h"

namespace flumo::studio {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

// Linux applies it to the calling thread alone.
constexpr int kNice = 15;
constexpr auto kRest = std::chrono::milliseconds(400);
constexpr int kCoarsest = 4;

// The coarsest resolution that still has the pixels of the thumbnail.
int divisor_of(const ThumbnailOrder& order) {
    if (order.width == 0) return 1;
    int divisor = kCoarsest;
    while (divisor > 1 && order.state->scene.size->width / divisor < order.width)
        divisor /= 2;
    return divisor;
}

// Layers that were changed since make other pictures.
std::string layer_times(const scene::Tracks& tracks) {
    std::string text;
    for (const auto& [index, track] : tracks) {
        const auto* const file = std::get_if<fs::path>(&track.keyframes.front().value);
        std::error_code error;
        if (!file || file->empty()) continue;
        const auto time = fs::last_write_time(*file, error);
        if (!error) text += std::to_string(time.time_since_epoch().count()) + " ";
    }
    return text;
}

}  // namespace

Thumbnailer::Thumbnailer(const scene::ControlCatalog& catalog, host::Host& host, fs::path cache,
                         QObject* parent)
    : QObject(parent),
      renderer_(catalog, host),
      cache_(std::move(cache)),
      identity_(std::to_string(host.identity().version)) {
    std::error_code ignored;
    fs::create_directories(cache_, ignored);
    thread_ = std::jthread([this](const std::stop_token& stop) { work(stop); });
}

Thumbnailer::~Thumbnailer() {
    thread_.request_stop();
    thread_.join();
}

int Thumbnailer::order(ThumbnailOrder order) {
    const int number = next_++;
    const std::scoped_lock lock(mutex_);
    // A frame in full size is looked at now; thumbnails fill a grid.
    if (order.width == 0)
        orders_.push_front({number, std::move(order)});
    else
        orders_.push_back({number, std::move(order)});
    changed_.notify_all();
    return number;
}

void Thumbnailer::drop(int number) {
    const std::scoped_lock lock(mutex_);
    std::erase_if(orders_, [number](const Numbered& waiting) { return waiting.number == number; });
}

void Thumbnailer::postpone() {
    not_before_ = (Clock::now() + kRest).time_since_epoch().count();
}

bool Thumbnailer::is_postponed() const {
    return Clock::now().time_since_epoch().count() < not_before_;
}

fs::path Thumbnailer::file_of(const ThumbnailOrder& order) const {
    const scene::Scene& scene = order.state->scene;
    const std::string text = identity_ + "\n" + std::to_string(order.frame) + " " +
                             std::to_string(order.width) + "\n" + layer_times(scene.tracks) + "\n" +
                             scene::scene_text(scene);
    const QByteArray hash = QCryptographicHash::hash(
        QByteArrayView(text.data(), static_cast<qsizetype>(text.size())), QCryptographicHash::Sha1);
    return cache_ / (hash.toHex().toStdString() + ".png");
}

void Thumbnailer::work(const std::stop_token& stop) {
    setpriority(PRIO_PROCESS, 0, kNice);
    while (!stop.stop_requested()) {
        Numbered next;
        {
            std::unique_lock lock(mutex_);
            if (!changed_.wait(lock, stop, [this] { return !orders_.empty(); })) return;
            if (is_postponed()) {
                changed_.wait_for(lock, stop, kRest, [] { return false; });
                continue;
            }
            next = std::move(orders_.front());
            orders_.pop_front();
        }
        try {
            if (serve(next, stop)) continue;
            const std::scoped_lock lock(mutex_);
            orders_.push_front(std::move(next));
        } catch (const std::exception& error) {
            emit failed(next.number, QString::fromUtf8(error.what()));
        }
    }
}

bool Thumbnailer::serve(const Numbered& numbered, const std::stop_token& stop) {
    const ThumbnailOrder& order = numbered.order;
    const fs::path file = order.width > 0 ? file_of(order) : fs::path();
    QImage image;
    if (!file.empty() && image.load(QString::fromStdString(file))) {
        emit ready(numbered.number, image);
        return true;
    }
    const auto world = renderer_.render(order.state, {order.frame, divisor_of(order)},
                                        [&] { return stop.stop_requested() || is_postponed(); });
    if (!world) return false;
    image = display_image(*world, Channels::kRgb);
    if (order.width > 0) {
        image = image.scaledToWidth(order.width, Qt::SmoothTransformation);
        // Written aside and renamed, so that another window never reads half of it.
        const fs::path aside = file.string() + ".part";
        std::error_code ignored;
        if (image.save(QString::fromStdString(aside), "PNG")) fs::rename(aside, file, ignored);
    }
    emit ready(numbered.number, image);
    return true;
}

}  // namespace flumo::studio
