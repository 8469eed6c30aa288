#include "studio/controls/editors/effect_control.h"

#include <span>
#include <utility>

#include "host/values/arbitrary_value.h"

namespace flumo::studio {
namespace {

// 8 bits a channel to 16.
PF_App_Color app_color(const QColor& color) {
    const auto wide = [](int channel) { return static_cast<A_u_short>(channel * 257); };
    return {wide(color.red()), wide(color.green()), wide(color.blue())};
}

}  // namespace

EffectControl::EffectControl(const scene::Control& control, host::Host& host)
    : control_(control), instance_(host.new_instance()) {}

EffectControl::~EffectControl() {
    close();
}

void EffectControl::set_stops(const std::vector<scene::Stop>& stops) {
    host::Host& host = instance_->host();
    const std::vector<uint8_t> stored = scene::to_stored_form(stops);
    instance_->set(control_.index,
                   host::Arbitrary(host::ArbitraryValue::unflatten(host, host.control(control_.index),
                                                                   std::as_bytes(std::span(stored)))));
}

std::vector<scene::Stop> EffectControl::stops() const {
    const auto value = std::get<host::Arbitrary>(instance_->value_at(control_.index, 0));
    return scene::stops_from_stored_form(value->flatten()).value_or(std::vector<scene::Stop>{});
}

void EffectControl::place(const ControlSurface& surface) {
    if (events_ && surface == surface_) return;
    close();
    surface_ = surface;
    panel_ = std::make_unique<host::Panel>(host::PanelOptions{.width = surface.size.width(),
                                                              .height = surface.size.height(),
                                                              .scale = surface.scale,
                                                              .background = app_color(surface.background),
                                                              .text = app_color(surface.outline)});
    panel_->colour_picker = [this](const PF_PixelFloat& sample) {
        return colour_picker ? colour_picker(sample) : host::PickedColour{};
    };
    const host::ControlPlace place{.index = control_.index,
                                   .frame = {0, 0, surface.size.width(), surface.size.height()}};
    events_ = std::make_unique<host::ControlEvents>(*instance_, place, panel_.get());
    events_->open();
}

void EffectControl::close() {
    if (events_) events_->close();
    events_.reset();
}

QImage EffectControl::draw(host::EventOutcome& outcome) {
    panel_->clear();
    outcome = events_->draw();
    const std::vector<uint8_t> pixels = panel_->rgba();
    const int width = panel_->image_width();
    QImage image =
        QImage(pixels.data(), width, panel_->image_height(), qsizetype{4} * width, QImage::Format_RGBA8888)
            .copy();
    image.setDevicePixelRatio(surface_.scale);
    return image;
}

}  // namespace flumo::studio
