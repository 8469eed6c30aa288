// What is shown of the document: its current frame, from the cache or rendered from coarse to fine.
#pragma once

#include <QObject>
#include <QString>

#include "studio/document/document.h"
#include "studio/preview/frame_cache.h"
#include "studio/preview/render_thread.h"
#include "studio/preview/shown_frame.h"

namespace flumo::studio {

/// On the UI thread; follows the document by itself.
class Preview : public QObject {
    Q_OBJECT

  public:
    static constexpr int kCoarsest = 4;

    /// The document must outlive it.
    explicit Preview(Document& document, QObject* parent = nullptr);

    /// The resolution at which a frame is finished: 1, 2 or 4 for full, half and quarter.
    int finest() const { return finest_; }
    void set_finest(int divisor);
    void set_channels(Channels channels);
    /// While frames are played each one is rendered at the finest resolution alone.
    void set_playing(bool playing);
    /// In bytes.
    void set_cache_limit(std::size_t bytes);

    /// Whether the frame is in memory, as it is set now.
    bool is_cached(int frame) const;
    /// The last one that was shown; without a world before the first.
    const ShownFrame& shown() const { return shown_; }
    /// Whether the shown frame is the document's current one at the finest resolution.
    bool is_finished() const;

  public slots:
    /// Files of layers are read again, and frames in memory are dropped.
    void reload();

  signals:
    void frame_shown(const flumo::studio::ShownFrame& frame);
    /// One line about the document's current frame.
    void frame_failed(const QString& why);
    /// Other frames are in memory, or frames of another look.
    void cache_changed();

  private:
    void refresh();
    void order();
    void take(const ShownFrame& frame);
    void take_failure(quint64 order, const QString& why);

    Document& document_;
    FrameCache cache_;
    int finest_ = 1;
    Channels channels_ = Channels::kRgb;
    bool playing_ = false;
    FrameOrder last_;
    ShownFrame shown_;
    RenderThread thread_;
};

}  // namespace flumo::studio
