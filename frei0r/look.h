// What an editor has set on one instance, and the values of the controls that come of it.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "frei0r/parameters.h"
#include "host/instance.h"
#include "scene/scene.h"

namespace flumo::frei0r {

class Look {
  public:
    /// Everything at its default. Both must outlive the look.
    Look(const scene::ControlCatalog& catalog, std::span<const Parameter> parameters);

    /// Reads a scene or a gradient; an empty text is none. Throws Failure, and leaves the look as it was, for
    /// a text that says nothing acceptable and for a file that cannot be read.
    void set_text(std::size_t index, const std::string& text);
    /// Throws Failure (usage), and leaves the look as it was, for a number that the parameter does not take.
    void set_number(std::size_t index, double fraction);
    /// What was set last and taken, or the default.
    const std::string& text(std::size_t index) const { return texts_[index]; }
    double number(std::size_t index) const { return numbers_[index]; }

    Use use() const;
    /// Frames per second that the scene's keyframes count in.
    host::FrameRate rate() const { return scene_.rate.value_or(host::FrameRate{}); }

    /// The effect with this look at this frame, which may be a fraction; `input` is the frame that a filter
    /// is given. On the effect's thread. Throws Failure for a layer that cannot be read: the instance then
    /// has the look that it had before the scene or a gradient changed, and the next call does not try again.
    host::Instance& applied(host::Host& host, double frame, const host::Layer& input);
    /// Lets go of the effect, as must be done on its thread before it is set down.
    void release();
    bool is_applied() const { return instance_ != nullptr; }

  private:
    const Parameter& parameter(std::size_t index) const { return parameters_[index]; }
    void take_texts(host::Host& host);
    void take_instance(std::unique_ptr<host::Instance> instance);
    void set_numbers();
    void set_input(const host::Layer& input);
    void set_control(std::string_view id, host::Value value);

    const scene::ControlCatalog& catalog_;
    std::span<const Parameter> parameters_;
    std::vector<std::string> texts_;
    std::vector<double> numbers_;
    scene::Scene scene_;
    /// By control index; goes before the scene's.
    std::map<int, std::vector<scene::Stop>> gradients_;
    bool texts_changed_ = true;
    std::unique_ptr<host::Instance> instance_;
    /// What scene and gradients say of every control, by control index.
    std::map<int, host::Track> base_;
};

}  // namespace flumo::frei0r
