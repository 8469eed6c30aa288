// One instance of a plug-in: what a host program has set, and its frames.
#pragma once

#include <memory>
#include <string>

#include "frei0r/complaints.h"
#include "frei0r/effect.h"
#include "frei0r/interface.h"
#include "frei0r/look.h"

namespace flumo::frei0r {

/// One thread at a time. What goes wrong is told on standard error, and the last good look stays.
class Instance {
  public:
    /// Starts nothing of the effect. `catalog` and `parameters` must outlive it.
    Instance(std::shared_ptr<Effect> effect, const scene::ControlCatalog& catalog,
             std::span<const Parameter> parameters, int width, int height);
    ~Instance();
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    /// `value` points to what the parameter's type says.
    void set(std::size_t index, F0rParam value);
    void get(std::size_t index, F0rParam value);

    /// Draws the frame at this time. `input` is null for a source. A frame that cannot be drawn is the one
    /// before it; without one, the input or nothing.
    void draw(double seconds, const uint32_t* input, uint32_t* output);

  private:
    void render(host::Host& host, double seconds, const host::Layer& input);
    host::Instance& applied(host::Host& host, double frame, const host::Layer& input);
    void write(const uint32_t* input, uint32_t* output) const;

    std::shared_ptr<Effect> effect_;
    std::span<const Parameter> parameters_;
    int width_;
    int height_;
    Complaints complaints_;
    Look look_;
    /// Given out by get().
    std::string text_;
    /// The last frame that was drawn, and the memory of the one before it.
    host::World drawn_;
    host::World spare_;
};

}  // namespace flumo::frei0r
