// The tables of functions that the host hands to an effect.
#pragma once

#include <string_view>

#include "effect_api/smart.h"
#include "effect_api/suites.h"

namespace flumo::host {

/// Handed out inside PF_InData; one set for each host, since the effect gets writable pointers.
struct CallTables {
    PF_UtilCallbacks utils;
    SPBasicSuite basic;
};

PF_InteractCallbacks interact_callbacks();
PF_UtilCallbacks util_callbacks();
SPBasicSuite basic_suite();
PF_PreRenderCallbacks pre_render_callbacks();
PF_SmartRenderCallbacks smart_render_callbacks();

PF_ANSICallbacksBlock ansi_block();
const PF_ANSICallbacksSuite1& ansi_suite();
const PF_HandleSuite1& handle_suite();
const AEGP_UtilitySuite3& utility_suite();
const PF_WorldSuite2& world_suite();
const PF_PixelDataSuite1& pixel_data_suite();
const PF_iterateFloatSuite1& iterate_float_suite();

/// The table of a suite that every call has, or null.
const void* find_standing_suite(std::string_view name, int version);

}  // namespace flumo::host
