// A control that the effect itself draws and edits: the effect's end of a gradient editor, without widgets.
#pragma once

#include <QColor>
#include <QImage>
#include <QSize>
#include <functional>
#include <memory>
#include <vector>

#include "host/control_events.h"
#include "host/instance.h"
#include "host/panel/panel.h"
#include "scene/control.h"
#include "scene/gradient/gradient_stops.h"

namespace flumo::studio {

/// Where and with which colours the control is drawn.
struct ControlSurface {
    QSize size;        ///< in panel pixels, not empty
    double scale = 1;  ///< image pixels per panel pixel
    QColor background;
    QColor outline;

    bool operator==(const ControlSurface&) const = default;
};

/// Keeps an instance of its own for the events of one gradient; needs no OpenGL. For the UI thread. The
/// control and the host are borrowed.
class EffectControl {
  public:
    /// Throws HostError.
    EffectControl(const scene::Control& control, host::Host& host);
    ~EffectControl();
    EffectControl(const EffectControl&) = delete;
    EffectControl& operator=(const EffectControl&) = delete;

    void set_stops(const std::vector<scene::Stop>& stops);
    std::vector<scene::Stop> stops() const;

    /// Opens the control there; where one was open before it is closed.
    void place(const ControlSurface& surface);
    bool is_placed() const { return events_ != nullptr; }
    /// The events of the control, which must be placed.
    host::ControlEvents& events() { return *events_; }
    /// Lets the effect draw itself. `error` tells why there is no picture.
    QImage draw(host::EventOutcome& outcome);

    /// Answers the effect's colour dialog.
    std::function<host::PickedColour(const PF_PixelFloat& sample)> colour_picker;

  private:
    void close();

    const scene::Control& control_;
    std::unique_ptr<host::Instance> instance_;
    ControlSurface surface_;
    std::unique_ptr<host::Panel> panel_;
    std::unique_ptr<host::ControlEvents> events_;
};

}  // namespace flumo::studio
