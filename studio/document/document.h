// The look that is edited: a scene, its undo steps and the frame that is shown. Everything runs on the UI
// thread.
#pragma once

#include <QObject>
#include <QString>
#include <QUndoStack>
#include <functional>
#include <optional>
#include <vector>

#include "host/host.h"
#include "scene/control.h"
#include "scene/scene.h"
#include "studio/document/scene_state.h"

namespace flumo::studio {

/// Every edit is one undo step; edits between begin_gesture() and end_gesture() are one together.
class Document : public QObject {
    Q_OBJECT

  public:
    /// Starts with every control at its default. Both references must outlive the document; `host` has its
    /// controls set up. Throws HostError.
    Document(const scene::ControlCatalog& catalog, host::Host& host, QObject* parent = nullptr);
    ~Document() override;
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    const scene::ControlCatalog& catalog() const { return catalog_; }
    host::Host& host() const { return host_; }

    /// Size, resolution, depth, frames and rate are always there.
    const scene::Scene& scene() const { return state_->scene; }
    /// The same, for threads and for later comparison; never changed.
    const SharedState& state() const { return state_; }

    /// The value without a track.
    const scene::ControlValue& default_value(const scene::Control& control) const;
    /// The value at `frame`, between keyframes as the effect gets it.
    scene::ControlValue value_at(const scene::Control& control, int frame) const;
    scene::ControlValue value_now(const scene::Control& control) const {
        return value_at(control, current_frame_);
    }
    /// Whether it differs from the default or has keyframes.
    bool is_set(const scene::Control& control) const;
    /// Whether a change at the current frame makes a keyframe.
    bool is_animated(const scene::Control& control) const;
    /// Empty unless the control is animated.
    std::vector<scene::Keyframe> keyframes(const scene::Control& control) const;

    int current_frame() const { return current_frame_; }
    /// No undo step.
    void set_current_frame(int frame);
    /// The lowest and the highest frame of the scene.
    int first_frame() const;
    int last_frame() const;

    /// Gestures may lie within each other; the outermost one is the undo step and gives its name.
    void begin_gesture(const QString& name);
    void end_gesture();

    /// At the current frame: the constant, or a keyframe when the control is animated. The value fits the
    /// control (scene::checked_number).
    void set_value(const scene::Control& control, scene::ControlValue value);
    /// Back to the default, without keyframes.
    void reset(const scene::Control& control);
    /// Another look, as an edit: what it leaves open (size, depth, frames, rate) stays.
    void replace(scene::Scene scene, const QString& name);

    /// Turning on makes a keyframe of the value at the current frame; turning off keeps that value alone.
    void set_animated(const scene::Control& control, bool on);
    /// A keyframe at `frame` with the value that the control has there; nothing where one is.
    void add_keyframe(const scene::Control& control, int frame);
    /// Nothing where there is none. After the last one the control keeps its value and is not animated.
    void remove_keyframe(const scene::Control& control, int frame);
    /// A keyframe that stands at `to` is replaced.
    void move_keyframe(const scene::Control& control, int from, int to);
    void set_interpolation(const scene::Control& control, int frame, scene::Interpolation interpolation);

    void set_size(const FrameSize& size);
    /// What is rendered of the size.
    void set_resolution(const Resolution& resolution);
    /// 8, 16 or 32.
    void set_depth(int depth);
    /// Not empty.
    void set_frames(std::vector<int> frames);
    void set_rate(const host::FrameRate& rate);
    void set_description(const std::string& description);

    /// Another document: no undo step, and none remain. What the scene leaves open gets the defaults.
    void load(scene::Scene scene);

    QUndoStack& undo_stack() { return undo_stack_; }

  signals:
    /// Value or keyframes of the control with this index.
    void control_changed(int index);
    /// Size, resolution, depth, frames, rate or description.
    void settings_changed();
    void frame_changed(int frame);
    /// Every control may have changed; control_changed() is not emitted then.
    void replaced();

  private:
    class Step;

    /// Replaces the state; listeners hear what differs.
    void show(SharedState state);
    /// One edit: `change` gets a copy of the state.
    void edit(const QString& name, const std::function<void(SceneState&)>& change);
    scene::ControlValue between(const scene::Control& control, const scene::Keyframe& left,
                                const scene::Keyframe& right, int frame) const;

    const scene::ControlCatalog& catalog_;
    host::Host& host_;
    std::vector<scene::ControlValue> defaults_;  ///< by control index
    SharedState state_;
    int current_frame_ = 0;
    int gesture_depth_ = 0;
    QString gesture_name_;
    SharedState before_gesture_;
    QUndoStack undo_stack_;
};

}  // namespace flumo::studio
