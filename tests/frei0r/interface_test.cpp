// Our declarations against the interface's own header, whose functions have other names here: one program
// cannot declare both.
#include <cinttypes>
#include <cstddef>
#include <type_traits>

#define f0r_init theirs_init
#define f0r_deinit theirs_deinit
#define f0r_get_plugin_info theirs_get_plugin_info
#define f0r_get_param_info theirs_get_param_info
#define f0r_construct theirs_construct
#define f0r_destruct theirs_destruct
#define f0r_set_param_value theirs_set_param_value
#define f0r_get_param_value theirs_get_param_value
#define f0r_update theirs_update
#define f0r_update2 theirs_update2
extern "C" {
#include <frei0r.h>
}
#undef f0r_init
#undef f0r_deinit
#undef f0r_get_plugin_info
#undef f0r_get_param_info
#undef f0r_construct
#undef f0r_destruct
#undef f0r_set_param_value
#undef f0r_get_param_value
#undef f0r_update
#undef f0r_update2

#include "frei0r/interface.h"

namespace {

template <typename Ours, typename Theirs>
constexpr bool kSameFunction = std::is_same_v<Ours, Theirs>;

/// The same function, but for the record that it is handed.
template <typename OurRecord, typename TheirRecord, typename... More>
constexpr bool same_with_record(void (*)(OurRecord*, More...), void (*)(TheirRecord*, More...)) {
    return sizeof(OurRecord) == sizeof(TheirRecord) && alignof(OurRecord) == alignof(TheirRecord);
}

static_assert(kSameFunction<decltype(f0r_init), decltype(theirs_init)>);
static_assert(kSameFunction<decltype(f0r_deinit), decltype(theirs_deinit)>);
static_assert(kSameFunction<decltype(f0r_construct), decltype(theirs_construct)>);
static_assert(kSameFunction<decltype(f0r_destruct), decltype(theirs_destruct)>);
static_assert(kSameFunction<decltype(f0r_set_param_value), decltype(theirs_set_param_value)>);
static_assert(kSameFunction<decltype(f0r_get_param_value), decltype(theirs_get_param_value)>);
static_assert(kSameFunction<decltype(f0r_update), decltype(theirs_update)>);
static_assert(kSameFunction<decltype(f0r_update2), decltype(theirs_update2)>);
static_assert(same_with_record(&f0r_get_plugin_info, &theirs_get_plugin_info));
static_assert(same_with_record(&f0r_get_param_info, &theirs_get_param_info));

#define EXPECT_SAME_FIELD(OURS, THEIRS, FIELD)                       \
    static_assert(offsetof(OURS, FIELD) == offsetof(THEIRS, FIELD)); \
    static_assert(std::is_same_v<decltype(OURS::FIELD), decltype(THEIRS::FIELD)>)
EXPECT_SAME_FIELD(F0rPluginInfo, f0r_plugin_info_t, name);
EXPECT_SAME_FIELD(F0rPluginInfo, f0r_plugin_info_t, author);
EXPECT_SAME_FIELD(F0rPluginInfo, f0r_plugin_info_t, plugin_type);
EXPECT_SAME_FIELD(F0rPluginInfo, f0r_plugin_info_t, color_model);
EXPECT_SAME_FIELD(F0rPluginInfo, f0r_plugin_info_t, frei0r_version);
EXPECT_SAME_FIELD(F0rPluginInfo, f0r_plugin_info_t, major_version);
EXPECT_SAME_FIELD(F0rPluginInfo, f0r_plugin_info_t, minor_version);
EXPECT_SAME_FIELD(F0rPluginInfo, f0r_plugin_info_t, num_params);
EXPECT_SAME_FIELD(F0rPluginInfo, f0r_plugin_info_t, explanation);
EXPECT_SAME_FIELD(F0rParamInfo, f0r_param_info_t, name);
EXPECT_SAME_FIELD(F0rParamInfo, f0r_param_info_t, type);
EXPECT_SAME_FIELD(F0rParamInfo, f0r_param_info_t, explanation);

static_assert(kF0rMajorVersion == FREI0R_MAJOR_VERSION);
static_assert(kF0rFilter == F0R_PLUGIN_TYPE_FILTER && kF0rSource == F0R_PLUGIN_TYPE_SOURCE);
static_assert(kF0rRgba8888 == F0R_COLOR_MODEL_RGBA8888);
static_assert(kF0rBool == F0R_PARAM_BOOL && kF0rDouble == F0R_PARAM_DOUBLE && kF0rString == F0R_PARAM_STRING);
static_assert(std::is_same_v<f0r_param_bool, double> && std::is_same_v<f0r_param_double, double>);
static_assert(std::is_same_v<f0r_param_string, char*>);

}  // namespace
