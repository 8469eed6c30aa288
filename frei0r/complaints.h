// Faults, told on standard error.
#pragma once

#include <map>
#include <string>

namespace flumo::frei0r {

/// Host programs set every parameter on every frame: of one subject, the same fault is told once until the
/// subject is well again.
class Complaints {
  public:
    /// Writes `flumo: SUBJECT: MESSAGE` in one line, unless it was the last of the subject.
    void tell(const std::string& subject, const std::string& message);
    void settle(const std::string& subject) { told_.erase(subject); }

  private:
    std::map<std::string, std::string> told_;
};

}  // namespace flumo::frei0r
