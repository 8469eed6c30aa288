#include "frei0r/instance.h"

#include <algorithm>
#include <stdexcept>

#include "base/failure.h"
#include "frei0r/frame_time.h"
#include "frei0r/pixels.h"

namespace flumo::frei0r {

Instance::Instance(std::shared_ptr<Effect> effect, const scene::ControlCatalog& catalog,
                   std::span<const Parameter> parameters, int width, int height)
    : effect_(std::move(effect)),
      parameters_(parameters),
      width_(width),
      height_(height),
      look_(catalog, parameters) {}

Instance::~Instance() {
    if (look_.is_applied()) effect_->run([this](host::Host&) { look_.release(); });
}

void Instance::set(std::size_t index, F0rParam value) {
    const Parameter& parameter = parameters_[index];
    try {
        if (parameter.is_text()) {
            const char* const text = *static_cast<const char* const*>(value);
            look_.set_text(index, text ? text : "");
        } else {
            look_.set_number(index, *static_cast<const double*>(value));
        }
        complaints_.settle(parameter.name);
    } catch (const std::exception& error) {
        complaints_.tell(parameter.name, error.what());
    }
}

void Instance::get(std::size_t index, F0rParam value) {
    if (parameters_[index].is_text()) {
        text_ = look_.text(index);
        *static_cast<char**>(value) = text_.data();
    } else {
        *static_cast<double*>(value) = look_.number(index);
    }
}

void Instance::draw(double seconds, const uint32_t* input, uint32_t* output) {
    try {
        const bool input_is_layer = input && look_.use() != Use::kOver;
        const host::Layer layer = input_is_layer ? layer_of(input, width_, height_) : host::Layer();
        effect_->run([&](host::Host& host) { render(host, seconds, layer); });
        complaints_.settle("frame");
    } catch (const std::exception& error) {
        complaints_.tell("frame", error.what());
    }
    write(input, output);
}

void Instance::render(host::Host& host, double seconds, const host::Layer& input) {
    host::FrameRequest request;
    request.width = width_;
    request.height = height_;
    applied(host, frame_at(seconds, look_.rate()), input).render(request, spare_);
    if (spare_.width() != width_ || spare_.height() != height_)
        throw std::runtime_error("the effect left it empty");
    std::swap(drawn_, spare_);
}

// The second time there is nothing new to fail.
host::Instance& Instance::applied(host::Host& host, double frame, const host::Layer& input) try {
    return look_.applied(host, frame, input);
} catch (const Failure& failure) {
    complaints_.tell("scene", failure.what());
    return look_.applied(host, frame, input);
}

void Instance::write(const uint32_t* input, uint32_t* output) const {
    const std::size_t pixels = static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_);
    if (drawn_.width() == 0) {
        if (input && input != output) std::copy_n(input, pixels, output);
        if (!input) std::fill_n(output, pixels, 0U);
    } else if (input && look_.use() == Use::kOver) {
        write_over(drawn_, input, output);
    } else {
        write_frame(drawn_, output);
    }
}

}  // namespace flumo::frei0r
