#include "studio/document/document.h"

#include <QUndoCommand>
#include <algorithm>
#include <utility>

#include "host/values/arbitrary_value.h"
#include "scene/gradient/gradient_stops.h"
#include "scene/keyframe_text.h"
#include "scene/scene_text.h"

namespace flumo::studio {
namespace {

using scene::Control;
using scene::ControlKind;
using scene::Keyframe;

QString shown_name(const Control& control) {
    return QString::fromStdString(control.name);
}

auto keyframe_at(std::vector<Keyframe>& keyframes, int frame) {
    return std::ranges::find(keyframes, frame, &Keyframe::frame);
}

void insert_keyframe(std::vector<Keyframe>& keyframes, Keyframe keyframe) {
    const auto place = std::ranges::lower_bound(keyframes, keyframe.frame, {}, &Keyframe::frame);
    if (place != keyframes.end() && place->frame == keyframe.frame) {
        place->value = std::move(keyframe.value);
    } else {
        keyframes.insert(place, std::move(keyframe));
    }
}

bool runs_smoothly(const Control& control) {
    return control.kind == ControlKind::kFloatSlider || control.kind == ControlKind::kAngle ||
           control.kind == ControlKind::kArbitrary;
}

void make_constant(SceneState& state, const Control& control, scene::ControlValue value) {
    state.animated.erase(control.index);
    state.scene.tracks[control.index] = {&control, {{0, std::move(value)}}};
}

}  // namespace

class Document::Step : public QUndoCommand {
  public:
    Step(Document& document, const QString& name, SharedState before, SharedState after)
        : QUndoCommand(name), document_(document), before_(std::move(before)), after_(std::move(after)) {}

    void undo() override { document_.show(before_); }
    void redo() override { document_.show(after_); }

  private:
    Document& document_;
    SharedState before_;
    SharedState after_;
};

Document::Document(const scene::ControlCatalog& catalog, host::Host& host, QObject* parent)
    : QObject(parent),
      catalog_(catalog),
      host_(host),
      defaults_(catalog.controls().size() + 1),
      state_(std::make_shared<SceneState>(filled_in({}))) {
    for (const Control& control : catalog.controls()) {
        if (control.is_number() || control.kind == ControlKind::kArbitrary ||
            control.kind == ControlKind::kLayer)
            defaults_.at(static_cast<std::size_t>(control.index)) = scene::default_value(control, host);
    }
}

Document::~Document() = default;

const scene::ControlValue& Document::default_value(const Control& control) const {
    return defaults_.at(static_cast<std::size_t>(control.index));
}

scene::ControlValue Document::value_at(const Control& control, int frame) const {
    const auto found = scene().tracks.find(control.index);
    if (found == scene().tracks.end()) return default_value(control);
    const std::vector<Keyframe>& keyframes = found->second.keyframes;
    const auto right = std::ranges::upper_bound(keyframes, frame, {}, &Keyframe::frame);
    if (right == keyframes.begin()) return right->value;
    const auto left = right - 1;
    if (right == keyframes.end() || left->frame == frame) return left->value;
    return between(control, *left, *right, frame);
}

scene::ControlValue Document::between(const Control& control, const Keyframe& left, const Keyframe& right,
                                      int frame) const {
    if (left.to_next == scene::Interpolation::kHold || !runs_smoothly(control)) return left.value;
    if (control.kind != ControlKind::kArbitrary) return scene::value_between(left, right, frame);
    const auto stored = [&](const Keyframe& keyframe) {
        const auto bytes = scene::to_stored_form(std::get<std::vector<scene::Stop>>(keyframe.value));
        return host::ArbitraryValue::unflatten(host_, host_.control(control.index),
                                               std::as_bytes(std::span(bytes)));
    };
    const double t = (double(frame) - left.frame) / (double(right.frame) - left.frame);
    const auto value = host::ArbitraryValue::interpolate(*stored(left), *stored(right), t);
    return scene::stops_from_stored_form(value->flatten()).value_or(std::vector<scene::Stop>());
}

bool Document::is_set(const Control& control) const {
    if (is_animated(control)) return true;
    const auto found = scene().tracks.find(control.index);
    return found != scene().tracks.end() && found->second.keyframes.front().value != default_value(control);
}

bool Document::is_animated(const Control& control) const {
    return state_->animated.contains(control.index);
}

std::vector<Keyframe> Document::keyframes(const Control& control) const {
    const auto found = scene().tracks.find(control.index);
    if (!is_animated(control) || found == scene().tracks.end()) return {};
    return found->second.keyframes;
}

void Document::set_current_frame(int frame) {
    if (frame == current_frame_) return;
    current_frame_ = frame;
    emit frame_changed(frame);
}

int Document::first_frame() const {
    return *std::ranges::min_element(*scene().frames);
}

int Document::last_frame() const {
    return *std::ranges::max_element(*scene().frames);
}

void Document::begin_gesture(const QString& name) {
    if (gesture_depth_++ > 0) return;
    gesture_name_ = name;
    before_gesture_ = state_;
}

void Document::end_gesture() {
    if (--gesture_depth_ > 0) return;
    const SharedState before = std::exchange(before_gesture_, nullptr);
    if (same_scene(*before, *state_)) return;
    undo_stack_.push(new Step(*this, gesture_name_, before, state_));
}

void Document::edit(const QString& name, const std::function<void(SceneState&)>& change) {
    begin_gesture(name);
    SceneState changed = *state_;
    change(changed);
    show(std::make_shared<const SceneState>(std::move(changed)));
    end_gesture();
}

void Document::show(SharedState state) {
    const SharedState before = std::exchange(state_, std::move(state));
    if (before == state_) return;
    if (!same_settings(before->scene, scene()) || before->scene.description != scene().description)
        emit settings_changed();
    for (const int index : changed_controls(*before, *state_))
        emit control_changed(index);
}

void Document::set_value(const Control& control, scene::ControlValue value) {
    edit(tr("Change %1").arg(shown_name(control)), [&](SceneState& state) {
        if (state.animated.contains(control.index)) {
            insert_keyframe(state.scene.tracks.at(control.index).keyframes,
                            {current_frame_, std::move(value)});
        } else {
            make_constant(state, control, std::move(value));
        }
    });
}

void Document::reset(const Control& control) {
    edit(tr("Reset %1").arg(shown_name(control)), [&](SceneState& state) {
        state.scene.tracks.erase(control.index);
        state.animated.erase(control.index);
    });
}

void Document::replace(scene::Scene scene, const QString& name) {
    edit(name, [&](SceneState& state) { state = filled_in(std::move(scene), state.scene); });
}

void Document::set_animated(const Control& control, bool on) {
    if (on == is_animated(control) || !scene::takes_keyframes(control)) return;
    const QString name = on ? tr("Animate %1") : tr("Remove keyframes of %1");
    edit(name.arg(shown_name(control)), [&](SceneState& state) {
        make_constant(state, control, value_now(control));
        if (!on) return;
        state.scene.tracks.at(control.index).keyframes.front().frame = current_frame_;
        state.animated.insert(control.index);
    });
}

void Document::add_keyframe(const Control& control, int frame) {
    if (!scene::takes_keyframes(control)) return;
    edit(tr("Add keyframe of %1").arg(shown_name(control)), [&](SceneState& state) {
        if (state.animated.insert(control.index).second) state.scene.tracks[control.index] = {&control, {}};
        std::vector<Keyframe>& keyframes = state.scene.tracks.at(control.index).keyframes;
        if (keyframe_at(keyframes, frame) == keyframes.end())
            insert_keyframe(keyframes, {frame, value_at(control, frame)});
    });
}

void Document::remove_keyframe(const Control& control, int frame) {
    if (!is_animated(control)) return;
    edit(tr("Delete keyframe of %1").arg(shown_name(control)), [&](SceneState& state) {
        std::vector<Keyframe>& keyframes = state.scene.tracks.at(control.index).keyframes;
        const auto found = keyframe_at(keyframes, frame);
        if (found == keyframes.end()) return;
        if (keyframes.size() == 1) {
            make_constant(state, control, scene::ControlValue(found->value));
        } else {
            keyframes.erase(found);
        }
    });
}

void Document::move_keyframe(const Control& control, int from, int to) {
    if (from == to || !is_animated(control)) return;
    edit(tr("Move keyframe of %1").arg(shown_name(control)), [&](SceneState& state) {
        std::vector<Keyframe>& keyframes = state.scene.tracks.at(control.index).keyframes;
        const auto found = keyframe_at(keyframes, from);
        if (found == keyframes.end()) return;
        Keyframe moved = *found;
        moved.frame = to;
        keyframes.erase(found);
        std::erase_if(keyframes, [&](const Keyframe& keyframe) { return keyframe.frame == to; });
        insert_keyframe(keyframes, std::move(moved));
    });
}

void Document::set_interpolation(const Control& control, int frame, scene::Interpolation interpolation) {
    if (!is_animated(control)) return;
    edit(tr("Change interpolation of %1").arg(shown_name(control)), [&](SceneState& state) {
        std::vector<Keyframe>& keyframes = state.scene.tracks.at(control.index).keyframes;
        const auto found = keyframe_at(keyframes, frame);
        if (found != keyframes.end()) found->to_next = interpolation;
    });
}

void Document::set_size(const FrameSize& size) {
    edit(tr("Change size"), [&](SceneState& state) { state.scene.size = size; });
}

void Document::set_resolution(const Resolution& resolution) {
    edit(tr("Change resolution"), [&](SceneState& state) { state.scene.resolution = resolution; });
}

void Document::set_depth(int depth) {
    edit(tr("Change depth"), [&](SceneState& state) { state.scene.depth = depth; });
}

void Document::set_frames(std::vector<int> frames) {
    edit(tr("Change frame range"), [&](SceneState& state) { state.scene.frames = std::move(frames); });
}

void Document::set_rate(const host::FrameRate& rate) {
    edit(tr("Change frame rate"), [&](SceneState& state) { state.scene.rate = rate; });
}

void Document::set_description(const std::string& description) {
    edit(tr("Change description"), [&](SceneState& state) { state.scene.description = description; });
}

void Document::load(scene::Scene scene) {
    state_ = std::make_shared<const SceneState>(filled_in(std::move(scene)));
    undo_stack_.clear();
    current_frame_ = this->scene().frames->front();
    emit replaced();
    emit settings_changed();
    emit frame_changed(current_frame_);
}

}  // namespace flumo::studio
