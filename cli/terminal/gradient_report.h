// The gradient after each event of a session, for people and scripts.
#pragma once

#include <string>
#include <string_view>

#include "host/control_events.h"
#include "host/values/arbitrary_value.h"

namespace flumo::cli {

/// The effect's text form; its stored form in hexadecimal digits; JSON as scene files have it.
enum class GradientForm { kText, kHex, kJson };

/// Reads `text`, `hex` or `json`. Throws Failure (usage).
GradientForm parse_gradient_form(std::string_view text);

/// The stops after each event of a session: a line each: the event, a tab and the gradient; or one JSON
/// array with an object a line, which also has the answer of the effect.
class GradientReport {
  public:
    explicit GradientReport(GradientForm form) : form_(form) {}

    void add(const std::string& event, const host::EventOutcome& outcome, const host::ArbitraryValue& value);
    /// Once something was added.
    std::string text() const;

  private:
    GradientForm form_;
    std::string lines_;
};

}  // namespace flumo::cli
