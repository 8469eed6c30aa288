// Plays the frames of the document.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include "studio/document/document.h"
#include "studio/preview/preview.h"

namespace flumo::studio {

/// Every frame is shown: those in memory at the scene's rate, others as fast as they are rendered.
class Player : public QObject {
    Q_OBJECT

  public:
    /// Both must outlive it.
    Player(Document& document, Preview& preview, QObject* parent = nullptr);

    bool is_playing() const { return playing_; }
    bool loops() const { return loops_; }
    /// From the current frame on, or from the first one when the last is shown.
    void set_playing(bool playing);
    /// Begins again after the last frame; otherwise the end stops.
    void set_loops(bool loops) { loops_ = loops; }

  public slots:
    void toggle() { set_playing(!playing_); }
    void go_to_first();
    void go_to_last();
    /// To the neighbouring frame of the scene's list; beyond its ends nothing happens.
    void step_forward();
    void step_back();

  signals:
    void playing_changed(bool playing);

  private:
    void advance();
    void show(int frame);
    void wait_for_next();

    Document& document_;
    Preview& preview_;
    QTimer timer_;
    QElapsedTimer since_change_;
    bool playing_ = false;
    bool loops_ = true;
    bool waits_ = false;  ///< for the frame to be rendered
};

}  // namespace flumo::studio
