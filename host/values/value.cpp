#include "host/values/value.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

#include "host/values/arbitrary_value.h"

namespace flumo::host {

namespace {

constexpr double kFixedOne = 65536.0;

Value between(const Keyframe& left, const Keyframe& right, double frame, ControlKind kind) {
    const double t = (frame - left.frame) / (right.frame - left.frame);
    if (kind == ControlKind::kFloatSlider || kind == ControlKind::kAngle) {
        const double from = std::get<double>(left.value);
        return from + (std::get<double>(right.value) - from) * t;
    }
    if (kind == ControlKind::kArbitrary && t > 0) {
        return Arbitrary(ArbitraryValue::interpolate(*std::get<Arbitrary>(left.value),
                                                     *std::get<Arbitrary>(right.value), t));
    }
    return left.value;
}

[[noreturn]] void refuse(const Control& control, const std::string& why) {
    throw std::invalid_argument("control " + std::to_string(control.index) + " \"" + control.name +
                                "\": " + why);
}

void check_number(const Control& control, double number) {
    if (!std::isfinite(number)) refuse(control, "the value is not a finite number");
    if (control.kind == ControlKind::kFloatSlider) return;
    const double scaled = control.kind == ControlKind::kAngle ? std::round(number * kFixedOne) : number;
    if (scaled != std::round(scaled)) refuse(control, "the value must be a whole number");
    if (scaled < std::numeric_limits<A_long>::min() || scaled > std::numeric_limits<A_long>::max()) {
        refuse(control, "the value does not fit into 32 bits");
    }
}

void write_number(const Control& control, double number, PF_ParamDefUnion& u) {
    if (control.kind == ControlKind::kFloatSlider) {
        u.fs_d.value = number;
        return;
    }
    const double scaled = control.kind == ControlKind::kAngle ? std::round(number * kFixedOne) : number;
    const auto whole = static_cast<A_long>(scaled);
    if (control.kind == ControlKind::kSlider) u.sd.value = whole;
    if (control.kind == ControlKind::kAngle) u.ad.value = whole;
    if (control.kind == ControlKind::kCheckbox) u.bd.value = whole;
    if (control.kind == ControlKind::kPopup) u.pd.value = whole;
}

}  // namespace

Track::Track(std::vector<Keyframe> keyframes) {
    if (keyframes.empty()) throw std::invalid_argument("a track needs at least one keyframe");
    for (Keyframe& keyframe : keyframes)
        insert(std::move(keyframe));
}

void Track::insert(Keyframe keyframe) {
    const auto place = std::ranges::lower_bound(keyframes_, keyframe.frame, {}, &Keyframe::frame);
    if (place != keyframes_.end() && place->frame == keyframe.frame) {
        place->value = std::move(keyframe.value);
    } else {
        keyframes_.insert(place, std::move(keyframe));
    }
}

Value Track::at(double frame, ControlKind kind) const {
    const auto right = std::ranges::upper_bound(keyframes_, frame, {}, &Keyframe::frame);
    if (right == keyframes_.begin()) return right->value;
    if (right == keyframes_.end()) return keyframes_.back().value;
    return between(*std::prev(right), *right, frame, kind);
}

void Track::put(double frame, Value value) {
    if (is_constant()) {
        keyframes_.front().value = std::move(value);
    } else {
        insert({frame, std::move(value)});
    }
}

void check_value(const Control& control, const Value& value) {
    if (control.is_number()) {
        const double* number = std::get_if<double>(&value);
        if (!number) refuse(control, "takes a number");
        check_number(control, *number);
    } else if (control.kind == ControlKind::kLayer) {
        if (!std::holds_alternative<Layer>(value) && !std::holds_alternative<LayerSource>(value)) {
            refuse(control, "takes a layer");
        }
    } else if (control.kind == ControlKind::kArbitrary) {
        const Arbitrary* arbitrary = std::get_if<Arbitrary>(&value);
        if (!arbitrary || !*arbitrary) refuse(control, "takes arbitrary data of its own kind");
    } else {
        refuse(control, "has no value");
    }
}

void write_value(const Control& control, const Value& value, PF_ParamDef& record) {
    record = control.definition;
    if (control.is_number()) {
        write_number(control, std::get<double>(value), record.u);
    } else if (control.kind == ControlKind::kLayer) {
        const Layer& layer = std::get<Layer>(value);
        const A_long dephault = record.u.ld.dephault;
        record.u.ld = layer ? layer->record() : PF_LayerDef{};
        record.u.ld.dephault = dephault;
    } else if (control.kind == ControlKind::kArbitrary) {
        record.u.arb_d.value = std::get<Arbitrary>(value)->handle();
    }
}

}  // namespace flumo::host
