// The parameters of a plug-in, made of the controls that the effect registers.
#pragma once

#include <string>
#include <vector>

#include "frei0r/number.h"
#include "scene/control.h"

namespace flumo::frei0r {

enum class PluginKind { kSource, kFilter };

/// What a filter does with the frame that it is given; the numbers are the steps of the parameter `use`.
enum class Use { kShape = 1, kAdd, kGradient, kReflection, kRefraction, kOver };

enum class Role {
    kScene,     ///< a scene file's name or its text
    kUse,       ///< what the input frame is for; filters only
    kGradient,  ///< a gradient as text
    kNumber,    ///< a control that takes a number
};

struct Parameter {
    Role role = Role::kNumber;
    /// Control ids, and words for the rest: what host programs name in their projects.
    std::string name;
    /// One line: where the control stands in the panel, and what 0 and 1 mean.
    std::string explanation;
    /// Of a gradient or a number; the catalogue's.
    const scene::Control* control = nullptr;
    /// Of a number, and of `use`.
    NumberScale scale{};
    /// Names of the steps, where the parameter is a choice.
    std::vector<std::string> choices{};

    bool is_text() const { return role == Role::kScene || role == Role::kGradient; }
    /// The number that frei0r has for the type.
    int type() const;
};

/// The controls as the effect registers them, which takes no OpenGL.
scene::ControlCatalog registered_controls();

/// In the order of their indices: texts and `use` first, then every control that takes a number, as in the
/// panel. The catalogue must outlive them.
std::vector<Parameter> make_parameters(PluginKind kind, const scene::ControlCatalog& catalog);

}  // namespace flumo::frei0r
