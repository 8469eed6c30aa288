// Frames of looks that are not the present one, rendered in the background and kept on disk.
#pragma once

#include <QImage>
#include <QObject>
#include <QString>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <filesystem>
#include <mutex>
#include <thread>

#include "studio/preview/frame_renderer.h"

namespace flumo::studio {

/// One frame of a look. Without a width it is rendered in full size and not kept on disk.
struct ThumbnailOrder {
    SharedState state;
    int frame = 0;
    int width = 0;  ///< of the picture in its pixels

    bool operator==(const ThumbnailOrder&) const = default;
};

/// On the UI thread; renders on a thread of its own, at a low priority and only while the window rests.
class Thumbnailer : public QObject {
    Q_OBJECT

  public:
    /// The references must outlive it. `cache` is made when it is missing; nothing is kept where that fails.
    Thumbnailer(const scene::ControlCatalog& catalog, host::Host& host, std::filesystem::path cache,
                QObject* parent = nullptr);
    /// Gives up the frame that is being rendered.
    ~Thumbnailer() override;
    Thumbnailer(const Thumbnailer&) = delete;
    Thumbnailer& operator=(const Thumbnailer&) = delete;

    /// Answered by ready() or failed() with the number that is returned, later in any case.
    int order(ThumbnailOrder order);
    /// Drops what was ordered and has not begun.
    void drop(int number);
    /// The window is busy: nothing is rendered for a moment.
    void postpone();

  signals:
    void ready(int number, const QImage& image);
    void failed(int number, const QString& why);

  private:
    struct Numbered {
        int number = 0;
        ThumbnailOrder order;
    };

    void work(const std::stop_token& stop);
    /// False when the frame was given up.
    bool serve(const Numbered& numbered, const std::stop_token& stop);
    std::filesystem::path file_of(const ThumbnailOrder& order) const;
    bool is_postponed() const;

    FrameRenderer renderer_;
    std::filesystem::path cache_;
    std::string identity_;  ///< of the effect: another version draws other pictures
    int next_ = 1;
    std::atomic<std::chrono::steady_clock::rep> not_before_ = 0;
    std::mutex mutex_;
    std::condition_variable_any changed_;
    std::deque<Numbered> orders_;
    std::jthread thread_;  ///< the last member: it uses the others
};

}  // namespace flumo::studio
