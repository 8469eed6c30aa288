// Frames on a software rasteriser: a program for each look, and a lock, as one frame draws at a time.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "effect/gpu/look.h"
#include "effect/gpu/render_data.h"

namespace flumo {

/// Whether a renderer with this GL_RENDERER string draws on the CPU.
bool IsSoftwareRenderer(std::string_view renderer);

/// The main fragment text with the look's switches as constants. Throws std::logic_error for a switch that
/// the text does not declare.
std::string MainTextForLook(const Look& look);

/// How many programs a thread's record keeps.
inline constexpr size_t kLookProgramLimit = 16;

/// The program that draws a frame of this look. On a software driver it is a program for the look, built on
/// first use and kept in the record, which deletes the least recently used one above kLookProgramLimit. When
/// it cannot be built, and on a hardware driver, it is mainProgram. The record owns the program. The record's
/// context is current.
gl::GLuint AESDK_OpenGL_ProgramForLook(AESDK_OpenGL_EffectRenderData& renderData, const Look& look);

/// Deletes the programs and empties the list. Their context is current.
void DeleteLookPrograms(std::vector<LookProgram>& programs);

/// Holds the lock of a software driver for one frame, from before its first GL call to after its last.
/// llvmpipe's contexts read each other's unfinished work without a lock, and it draws for one of them at a
/// time in any case. Takes no lock for a hardware driver, as the root record tells, or without a root.
class SoftwareTurn {
  public:
    explicit SoftwareTurn(const AESDK_OpenGL_EffectCommonData* root);
    ~SoftwareTurn();
    SoftwareTurn(const SoftwareTurn&) = delete;
    SoftwareTurn& operator=(const SoftwareTurn&) = delete;

  private:
    bool taken_;
};

/// Releases the lock of a SoftwareTurn while the host works for this frame on threads of its own, which may
/// wait for the lock themselves. The caller makes no GL call during it; `renderData` is the record of the
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
