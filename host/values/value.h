// The value of a control, and how it changes over time.
#pragma once

#include <functional>
#include <memory>
#include <variant>
#include <vector>

#include "host/values/control.h"
#include "host/values/world.h"

namespace flumo::host {

class ArbitraryValue;

/// A layer's picture; null when no layer is chosen.
using Layer = std::shared_ptr<const World>;
/// A layer whose picture changes; called with the frame, from several threads at once.
using LayerSource = std::function<Layer(double frame)>;
/// A value that only the effect understands. Shared copies are never changed: the host copies first.
using Arbitrary = std::shared_ptr<const ArbitraryValue>;

/// double: slider, float slider, checkbox (0 or 1), popup (from 1), angle in degrees.
using Value = std::variant<double, Layer, LayerSource, Arbitrary>;

struct Keyframe {
    double frame = 0;
    Value value{};
};

/// A control's value over time: constant, or keyframes in ascending frames. Before the first and after
/// the last keyframe their values hold. Between two, float sliders and angles run linearly, arbitrary
/// data through the effect's own interpolation, all else holds the left value.
class Track {
  public:
    Track() = default;
    explicit Track(Value constant) : keyframes_{{0, std::move(constant)}} {}
    /// Sorts by frame; of two keyframes at one frame the later in the list wins. Throws
    /// std::invalid_argument for an empty list.
    explicit Track(std::vector<Keyframe> keyframes);

    bool is_constant() const { return keyframes_.size() == 1; }
    const std::vector<Keyframe>& keyframes() const { return keyframes_; }
    Value at(double frame, ControlKind kind) const;
    /// A constant is replaced; else the keyframe at exactly `frame` is replaced or added.
    void put(double frame, Value value);

  private:
    void insert(Keyframe keyframe);

    std::vector<Keyframe> keyframes_;
};

/// Throws std::invalid_argument, naming the control, when the value is of the wrong type, a number is not
/// finite, not whole where it must be, or does not fit the control's record. Ranges are not enforced.
void check_value(const Control& control, const Value& value);

/// Writes the value into a copy of the control's record, as a check-out hands it to the effect. The
/// record borrows what the value owns. A LayerSource must have been asked for its picture before.
void write_value(const Control& control, const Value& value, PF_ParamDef& record);

}  // namespace flumo::host
