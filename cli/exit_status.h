// How the program ends, as scripts see it.
#pragma once

#include <stdexcept>
#include <string>

namespace flumo::cli {

/// Exit status of the process. Documented in `flumo --help`: the numbers are a promise to scripts.
enum class ExitStatus : int {
    kDone = 0,              ///< everything asked for was done
    kFrameFailed = 1,       ///< the effect failed on at least one frame or event, or a check found something
    kUsage = 2,             ///< options, values or a scene's contents are not acceptable
    kUnreadableInput = 3,   ///< a module, scene, gradient or layer file cannot be read
    kNoOpenGl = 4,          ///< the effect found no usable OpenGL
    kUnwritableOutput = 5,  ///< a file, its folder or standard output cannot be written
    kInterrupted = 130,     ///< stopped by SIGINT
    kTerminated = 143,      ///< stopped by SIGTERM
};

/// A failure that ends the program: one line for the person, one status for the script.
class Failure : public std::runtime_error {
  public:
    Failure(ExitStatus status, const std::string& message) : std::runtime_error(message), status_(status) {}

    ExitStatus status() const { return status_; }

  private:
    ExitStatus status_;
};

inline Failure usage_failure(const std::string& message) {
    return {ExitStatus::kUsage, message};
}
inline Failure input_failure(const std::string& message) {
    return {ExitStatus::kUnreadableInput, message};
}
inline Failure output_failure(const std::string& message) {
    return {ExitStatus::kUnwritableOutput, message};
}

}  // namespace flumo::cli
