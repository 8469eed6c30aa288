#pragma once

namespace flumo {

/// bench/reference.frag, whole and null-terminated; it takes the vertex text and the uniforms of the effect's
/// image program.
extern const char* const kReferenceFragmentText;

}  // namespace flumo
