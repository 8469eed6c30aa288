// What frames on a software rasteriser have of their own: a program for each look, and turns.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "effect/gpu/look.h"
#include "effect/gpu/render_data.h"

namespace flumo {

/// Whether a renderer of this name, as GL tells it, draws on the CPU.
bool IsSoftwareRenderer(std::string_view renderer);

/// The main fragment text with the look's switches as constants. Throws std::logic_error for a switch that
/// the text does not declare.
std::string MainTextForLook(const Look& look);

/// How many programs a thread's record keeps.
inline constexpr size_t kLookProgramLimit = 16;

/// The program that draws a frame of this look: on a software driver one for the look, built on first use and
/// kept in the record, where the one that was used least recently gives way; mainProgram where that cannot be
/// built, and on a hardware driver. The record owns the program, and its context is current.
gl::GLuint AESDK_OpenGL_ProgramForLook(AESDK_OpenGL_EffectRenderData& renderData, const Look& look);

/// Deletes the programs and empties the list. Their context is current.
void DeleteLookPrograms(std::vector<LookProgram>& programs);

/// One frame's turn in a software driver, from before its first GL call to after its last. llvmpipe's
/// contexts read each other's unfinished work without a lock, and it draws for one of them at a time anyway.
/// Takes no lock where the root record's driver is hardware, or where there is no root.
class SoftwareTurn {
  public:
    explicit SoftwareTurn(const AESDK_OpenGL_EffectCommonData* root);
    ~SoftwareTurn();
    SoftwareTurn(const SoftwareTurn&) = delete;
    SoftwareTurn& operator=(const SoftwareTurn&) = delete;

  private:
    bool taken_;
};

/// Lets other frames have their turn while the host works for this one on threads of its own, which may be
/// waiting for a turn themselves. Makes no GL call until it ends; `renderData` is the record of a
/// SoftwareTurn.
class SoftwareTurnPause {
  public:
    explicit SoftwareTurnPause(const AESDK_OpenGL_EffectRenderData& renderData);
    ~SoftwareTurnPause();
    SoftwareTurnPause(const SoftwareTurnPause&) = delete;
    SoftwareTurnPause& operator=(const SoftwareTurnPause&) = delete;

  private:
    bool paused_;
};

}  // namespace flumo
