// What the host has lent and not received back, and what an effect did that it must not do.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <map>
#include <mutex>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "host/handles.h"

namespace flumo::host {

/// Things that are counted by number alone.
enum class Lent { kParam, kLayer, kDrawbotObject, kCount };

/// Which rule of the host an effect broke.
enum class MisuseKind : uint8_t {
    /// A function that this command does not allow, or another call's effect reference.
    kWrongCall,
    kWrongArgument,
    /// A check-in without a check-out.
    kNotCheckedOut,
    /// A release without an acquisition.
    kNotAcquired,
    /// An unlock without a lock.
    kNotLocked,
    /// A handle that does not live, disposed of while locked, or written past its end.
    kHandle,
    /// A drawing reference or object that is not alive, such as null.
    kDrawingReference,
    kNotOffered,
    /// Rectangles, numbers of controls or groups that contradict each other.
    kAnnouncement,
    /// An exception left the entry point.
    kException,
};

struct Misuse {
    MisuseKind kind;
    std::string text;

    friend std::ostream& operator<<(std::ostream& out, const Misuse& misuse) { return out << misuse.text; }
};

/// Thread-safe.
class Accounting {
  public:
    explicit Accounting(const HandleTable& handles) : handles_(handles) {}

    /// Nothing is lent: no handle is alive, no lock is held, everything was given back.
    bool clean() const;
    /// As clean(), except that handles may be alive while none is locked: the state between calls.
    bool idle() const;
    /// What is still lent, a line each; empty when clean().
    std::string describe() const;

    int lent(Lent what) const;
    /// Suites that are acquired and not released, by name and version.
    std::map<std::pair<std::string, int>, int> acquired_suites() const;

    /// What the effect did against the rules, the oldest first (the first thousand).
    std::vector<Misuse> misuses() const;
    std::vector<std::string> misuse_texts() const;
    /// Texts that the effect asked to be shown to the user (the first thousand).
    std::vector<std::string> messages() const;
    void forget_misuses();
    void forget_messages();

    // For the host itself.
    void lend(Lent what);
    void take_back(Lent what);
    void suite_acquired(const std::string& name, int version);
    /// A release without an acquire is noted as a misuse.
    void suite_released(const std::string& name, int version);
    void misuse(MisuseKind kind, std::string text);
    void message(std::string text);

  private:
    const HandleTable& handles_;
    std::array<std::atomic<int>, static_cast<size_t>(Lent::kCount)> lent_{};
    mutable std::mutex mutex_;
    std::map<std::pair<std::string, int>, int> suites_;
    std::vector<Misuse> misuses_;
    std::vector<std::string> messages_;
};

}  // namespace flumo::host
