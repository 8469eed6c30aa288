// How the libraries fail.
#pragma once

#include <stdexcept>
#include <string>

namespace flumo {

/// Whose fault a failure is, so that a program can tell what to do about it.
enum class FailureKind {
    kFrameFailed,       ///< the effect failed on a frame or an event
    kUsage,             ///< a value that was asked for, or a scene's contents, are not acceptable
    kUnreadableInput,   ///< a module, scene, gradient or layer file cannot be read
    kNoOpenGl,          ///< the effect found no usable OpenGL
    kUnwritableOutput,  ///< a file, its folder or a stream cannot be written
};

/// A failure with one line for the person who asked.
class Failure : public std::runtime_error {
  public:
    Failure(FailureKind kind, const std::string& message) : std::runtime_error(message), kind_(kind) {}

    FailureKind kind() const { return kind_; }

  private:
    FailureKind kind_;
};

inline Failure usage_failure(const std::string& message) {
    return {FailureKind::kUsage, message};
}
inline Failure input_failure(const std::string& message) {
    return {FailureKind::kUnreadableInput, message};
}
inline Failure output_failure(const std::string& message) {
    return {FailureKind::kUnwritableOutput, message};
}

}  // namespace flumo
