// A command that an effect answered with an error.
#pragma once

#include <stdexcept>
#include <string>

#include "effect_api/commands.h"

namespace flumo::host {

/// "PF_Cmd_SMART_RENDER", or "command 77" for a number without a name.
std::string command_name(PF_Cmd command);
/// "4 (PF_Err_OUT_OF_MEMORY)".
std::string error_name(PF_Err error);

class HostError : public std::runtime_error {
  public:
    /// `message` is what the effect asked to show, empty when nothing.
    HostError(PF_Cmd command, PF_Err code, std::string message);

    PF_Cmd command() const { return command_; }
    PF_Err code() const { return code_; }
    const std::string& message() const { return message_; }

  private:
    PF_Cmd command_;
    PF_Err code_;
    std::string message_;
};

}  // namespace flumo::host
