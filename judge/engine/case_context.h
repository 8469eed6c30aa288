// What a case reports while it is played in a process of its own. A step is named before it is played, so
// that the parent process knows what an effect did when it ended the process.
#pragma once

#include <functional>
#include <random>
#include <string>

#include "judge/engine/subject.h"

namespace flumo::judge {

struct Case;

/// Thrown by a case that does not apply to the effect.
struct Skipped {
    std::string why;
};

/// Belongs to one thread.
class CaseContext {
  public:
    /// Takes one line of JSON at a time; judge.cpp reads it.
    using WriteLine = std::function<void(const std::string& line)>;

    CaseContext(Subject subject, StepChoice choice, WriteLine write);

    const Subject& subject() const { return subject_; }

    /// Plays `body` unless the choice leaves this step out. An exception in it is a finding. Names are unique
    /// in a case; a step does not depend on the steps before it.
    void step(const std::string& name, const std::function<void()>& body);
    void expect(bool holds, const std::string& expected, const std::string& seen);
    void finding(const std::string& expected, const std::string& seen);
    /// As finding(), for what is against no rule.
    void note(const std::string& expected, const std::string& seen);
    /// Random numbers that follow from the seed and this name.
    std::mt19937_64 random(const std::string& name) const;

    /// Plays the case and says that it is done. Throws no error of the effect.
    void play(const Case& played);

  private:
    bool is_chosen(const std::string& name);
    void guarded(const std::function<void()>& body);
    void report(const char* kind, const std::string& expected, const std::string& seen);

    Subject subject_;
    StepChoice choice_;
    WriteLine write_;
};

/// A whole number from `least` to `most`.
inline int between(std::mt19937_64& random, int least, int most) {
    return least + static_cast<int>(random() % static_cast<uint64_t>(int64_t{most} - least + 1));
}

}  // namespace flumo::judge
