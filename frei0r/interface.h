// The frei0r interface for video effects, version 1.2: what host programs call, and the records that they
// pass. The functions that a plug-in exports are these and no others.
#pragma once

#include <cstdint>

extern "C" {

inline constexpr int kF0rMajorVersion = 1;

/// What a plug-in is.
inline constexpr int kF0rFilter = 0;
inline constexpr int kF0rSource = 1;

/// Four bytes a pixel: red, green, blue, alpha, not premultiplied. Rows follow each other without a gap.
inline constexpr int kF0rRgba8888 = 1;

/// Kinds of parameters. A bool is a double of 0 or 1, a double lies between 0 and 1, a string is a `char*`.
inline constexpr int kF0rBool = 0;
inline constexpr int kF0rDouble = 1;
inline constexpr int kF0rString = 4;

/// All texts are UTF-8 and belong to the plug-in, which keeps them while it is loaded.
struct F0rPluginInfo {
    const char* name;
    const char* author;
    int plugin_type;
    int color_model;
    int frei0r_version;
    int major_version;
    int minor_version;
    int num_params;
    const char* explanation;
};

struct F0rParamInfo {
    const char* name;
    int type;
    const char* explanation;
};

using F0rInstance = void*;
/// Points to a double, or to a `char*`. The pointee belongs to the caller; a `char*` that the plug-in writes
/// belongs to the instance, until the parameter is set again.
using F0rParam = void*;

/// Returns 1; each call has its f0r_deinit().
int f0r_init(void);
void f0r_deinit(void);
void f0r_get_plugin_info(F0rPluginInfo* info);
/// An index that no parameter has leaves the record alone.
void f0r_get_param_info(F0rParamInfo* info, int param_index);
/// Null for a size that the plug-in cannot draw.
F0rInstance f0r_construct(unsigned int width, unsigned int height);
void f0r_destruct(F0rInstance instance);
void f0r_set_param_value(F0rInstance instance, F0rParam param, int param_index);
void f0r_get_param_value(F0rInstance instance, F0rParam param, int param_index);
/// `inframe` is null for a source. `time` is in seconds.
void f0r_update(F0rInstance instance, double time, const uint32_t* inframe, uint32_t* outframe);
/// The same, for mixers; a source or a filter uses the first frame alone.
void f0r_update2(F0rInstance instance, double time, const uint32_t* inframe1, const uint32_t* inframe2,
                 const uint32_t* inframe3, uint32_t* outframe);
}
