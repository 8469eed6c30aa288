// An OpenGL context of the caller, which an effect must leave unchanged.
#pragma once

#include <memory>

namespace flumo::judge {

/// Current on the thread that made it, with a surface, while it lives.
class CallersContext {
  public:
    /// Null where EGL offers no context with a surface.
    static std::unique_ptr<CallersContext> make();
    ~CallersContext();
    CallersContext(const CallersContext&) = delete;
    CallersContext& operator=(const CallersContext&) = delete;

    /// Whether the thread has exactly this context, its surface and its interface current.
    bool is_current() const;

  private:
    struct Handles;
    explicit CallersContext(std::unique_ptr<const Handles> handles);

    std::unique_ptr<const Handles> handles_;
};

/// Whether the calling thread has no context current.
bool has_no_context();

}  // namespace flumo::judge
