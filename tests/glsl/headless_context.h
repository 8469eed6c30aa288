#pragma once

#include <string>

namespace flumo::test {

// An OpenGL 3.3 context without a display, current on the thread that made it for as long as it lives.
// Throws std::runtime_error where there is no driver for it.
class HeadlessContext {
  public:
    HeadlessContext();
    ~HeadlessContext();
    HeadlessContext(const HeadlessContext&) = delete;
    HeadlessContext& operator=(const HeadlessContext&) = delete;

    // The driver's own name, such as "llvmpipe (LLVM 15.0.6, 256 bits)".
    std::string renderer() const;

  private:
    void* display_ = nullptr;
    void* context_ = nullptr;
};

}  // namespace flumo::test
