// How commands are sent to the loaded effect.
#pragma once

#include <string>

#include "effect_api/effect.h"
#include "host/module/host_error.h"

namespace flumo::host {

/// Result of one command.
struct Outcome {
    PF_Err error = PF_Err_NONE;
    PF_OutData out{};
    /// The text to show, when the effect asked to show one.
    std::string message;
};

/// Throws HostError when the command returned an error.
inline void throw_on_error(PF_Cmd command, const Outcome& outcome) {
    if (outcome.error != PF_Err_NONE) throw HostError(command, outcome.error, outcome.message);
}

/// Sends commands outside an instance. Host implements it; values use only this part of it.
class CommandSender {
  public:
    virtual ~CommandSender() = default;
    /// Returns the effect's result; throws nothing for a failure of the effect.
    virtual Outcome send(PF_Cmd command, void* extra = nullptr) = 0;

  protected:
    CommandSender() = default;
    CommandSender(const CommandSender&) = default;
    CommandSender& operator=(const CommandSender&) = default;
};

}  // namespace flumo::host
