// Commands on their way to the loaded effect.
#pragma once

#include <string>

#include "effect_api/effect.h"

namespace flumo::host {

/// Answer of one command.
struct Outcome {
    PF_Err error = PF_Err_NONE;
    PF_OutData out{};
    /// The text to show, when the effect asked to show one.
    std::string message;
};

/// Sends commands outside an instance. The Host is one; values need no more of it.
class CommandSender {
  public:
    virtual ~CommandSender() = default;
    /// Reports what came back; throws nothing of the effect's.
    virtual Outcome send(PF_Cmd command, void* extra = nullptr) = 0;

  protected:
    CommandSender() = default;
    CommandSender(const CommandSender&) = default;
    CommandSender& operator=(const CommandSender&) = default;
};

}  // namespace flumo::host
