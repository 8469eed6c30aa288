#include "frei0r/look.h"

#include <algorithm>

#include "base/failure.h"
#include "base/number_text.h"
#include "job/look.h"
#include "scene/gradient/gradient_text.h"

namespace flumo::frei0r {
namespace {

constexpr const char* kSpace = " \t\r\n";

/// A scene's text begins with a brace, which no file name does that anybody would give.
bool is_scene_text(const std::string& text) {
    const std::size_t first = text.find_first_not_of(kSpace);
    return first != text.npos && text[first] == '{';
}

scene::Scene read_scene(const std::string& text, const scene::ControlCatalog& catalog) {
    if (text.find_first_not_of(kSpace) == text.npos) return {};
    if (is_scene_text(text)) return scene::parse_scene(text, "scene", catalog);
    return scene::read_scene(text, catalog);
}

std::string expected(const Parameter& parameter) {
    const NumberScale& scale = parameter.scale;
    return "expected " + number_text(scale.fraction_of(scale.valid.min)) + " to " +
           number_text(scale.fraction_of(scale.valid.max));
}

/// The control that takes the input, and the mode in which the effect colours by it.
struct UseRow {
    Use use;
    const char* layer;
    double colorize_mode;
};
constexpr UseRow kUses[] = {{Use::kShape, "Layer1", 0},
                            {Use::kAdd, "Layer2", 0},
                            {Use::kGradient, "Layer3", 2},
                            {Use::kReflection, "Layer3", 3},
                            {Use::kRefraction, "Layer3", 4}};

}  // namespace

Look::Look(const scene::ControlCatalog& catalog, std::span<const Parameter> parameters)
    : catalog_(catalog), parameters_(parameters), texts_(parameters.size()), numbers_(parameters.size()) {
    std::ranges::transform(parameters, numbers_.begin(),
                           [](const Parameter& parameter) { return parameter.scale.default_fraction(); });
}

void Look::set_text(std::size_t index, const std::string& text) {
    if (text == texts_[index]) return;
    if (parameter(index).role == Role::kScene) {
        scene_ = read_scene(text, catalog_);
    } else if (text.empty()) {
        gradients_.erase(parameter(index).control->index);
    } else {
        gradients_[parameter(index).control->index] = scene::parse_gradient(text);
    }
    texts_[index] = text;
    texts_changed_ = true;
}

void Look::set_number(std::size_t index, double fraction) {
    if (!parameter(index).scale.value_at(fraction))
        throw usage_failure(number_text(fraction) + ": " + expected(parameter(index)));
    numbers_[index] = fraction;
}

Use Look::use() const {
    for (std::size_t i = 0; i < parameters_.size(); ++i) {
        if (parameter(i).role == Role::kUse)
            return static_cast<Use>(static_cast<int>(*parameter(i).scale.value_at(numbers_[i])));
    }
    return Use::kOver;
}

host::Instance& Look::applied(host::Host& host, double frame, const host::Layer& input) {
    if (texts_changed_) take_texts(host);
    for (const auto& [index, track] : base_)
        instance_->set(index, track.at(frame, host.control(index).kind));
    set_numbers();
    if (input) set_input(input);
    return *instance_;
}

void Look::release() {
    base_.clear();
    instance_.reset();
}

void Look::take_texts(host::Host& host) {
    texts_changed_ = false;
    if (!instance_) take_instance(host.new_instance());
    auto fresh = host.new_instance();
    scene::Tracks tracks = scene_.tracks;
    for (const auto& [index, stops] : gradients_)
        tracks[index] = {&catalog_.controls()[static_cast<std::size_t>(index) - 1], {{0, stops}}};
    job::apply_tracks(*fresh, tracks, host::Depth::k8);
    take_instance(std::move(fresh));
}

void Look::take_instance(std::unique_ptr<host::Instance> instance) {
    base_.clear();
    instance_ = std::move(instance);
    for (const scene::Control& control : catalog_.controls()) {
        if (control.has_value()) base_.emplace(control.index, instance_->track(control.index));
    }
}

// A number at its default says nothing.
void Look::set_numbers() {
    for (std::size_t i = 0; i < parameters_.size(); ++i) {
        if (parameter(i).role != Role::kNumber) continue;
        const double value = *parameter(i).scale.value_at(numbers_[i]);
        if (value != parameter(i).scale.default_value) instance_->set(parameter(i).control->index, value);
    }
}

void Look::set_input(const host::Layer& input) {
    const auto* row = std::ranges::find(kUses, use(), &UseRow::use);
    if (row == std::end(kUses)) return;
    set_control(row->layer, input);
    if (row->colorize_mode != 0) set_control("ColorizeMode", row->colorize_mode);
}

void Look::set_control(std::string_view id, host::Value value) {
    instance_->set(catalog_.find(id).index, std::move(value));
}

}  // namespace flumo::frei0r
