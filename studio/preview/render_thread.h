// The thread that renders what the preview shows. The newest order wins.
#pragma once

#include <QObject>
#include <QString>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

#include "host/host.h"
#include "scene/control.h"
#include "studio/preview/shown_frame.h"

namespace flumo::studio {

/// Its signals come from the render thread, so that receivers on the UI thread get them queued. One thread is
/// enough: contexts of one process share llvmpipe's rasteriser, which draws for one of them at a time.
class RenderThread : public QObject {
    Q_OBJECT

  public:
    /// Both references must outlive it.
    RenderThread(const scene::ControlCatalog& catalog, host::Host& host, QObject* parent = nullptr);
    /// Waits for the frame that is being rendered.
    ~RenderThread() override;
    RenderThread(const RenderThread&) = delete;
    RenderThread& operator=(const RenderThread&) = delete;

    /// Returns at once. An order that waits is dropped; of one that is being rendered the coarsest picture
    /// still comes, so that a control that moves all the time shows something.
    void submit(FrameOrder order);
    /// Layers are read from their files again.
    void reload_layers();

  signals:
    void frame_ready(const flumo::studio::ShownFrame& frame);
    /// One line; the order is given up.
    void frame_failed(quint64 order, const QString& why);

  private:
    void work(const std::stop_token& stop);
    void serve(const FrameOrder& order, const std::stop_token& stop);
    void show(const FrameOrder& order, int divisor, std::shared_ptr<const host::World> world);
    /// Whether no newer order comes before a level that is expected to take this long.
    bool stays_newest(std::chrono::milliseconds cost, const std::stop_token& stop);

    FrameRenderer renderer_;
    std::mutex mutex_;
    std::condition_variable_any changed_;
    std::optional<FrameOrder> next_;
    bool reload_ = false;
    std::jthread thread_;  ///< the last member: it uses the others
};

}  // namespace flumo::studio
