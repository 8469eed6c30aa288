#pragma once

namespace flumo {

// The GLSL 3.30 texts, whole and null-terminated, their first line "#version 330". They are the files beside
// this header, made into strings by the build.

extern const char* const kUvVertexText;     // inputs Position, UVs
extern const char* const kColorVertexText;  // inputs Position, Color

extern const char* const kMainFragmentText;    // the image, straight colour
extern const char* const kCopyFragmentText;    // a texture unchanged
extern const char* const kBlurFragmentText;    // reduction of the double-size image
extern const char* const kColorFragmentText;   // flat colour
extern const char* const kOutputFragmentText;  // host's channel order and scale

}  // namespace flumo
