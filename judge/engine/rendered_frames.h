// Frames that one thread has rendered, for several threads to render again.
#pragma once

#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <vector>

#include "judge/engine/frame_judge.h"

namespace flumo::judge {

/// A frame as one thread renders it.
struct KnownFrame {
    host::Instance* instance;
    host::FrameRequest request;
    host::World frame;
};

/// Frames of all depths, sizes and instances, in an order that alternates between them.
std::vector<KnownFrame> known_frames(std::span<const std::unique_ptr<host::Instance>> instances,
                                     const std::vector<host::Depth>& depths);

/// What threads report, passed on when they have ended. Thread-safe.
class Mismatches {
  public:
    void add(std::string text);
    void report(CaseContext& context) const;

  private:
    std::mutex mutex_;
    std::vector<std::string> texts_;
};

/// Renders every frame a few times, beginning with number `start`.
void render_all(const std::vector<KnownFrame>& known, size_t start, Mismatches& mismatches);

/// Throws Skipped for an effect that renders on one thread only.
void require_threads(const Fixture& fixture);

}  // namespace flumo::judge
