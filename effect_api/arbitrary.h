// Arbitrary data: values that only the effect understands, created, stored and interpolated by
// calling it back. The refcon is the first member of every union member.
#pragma once

#include "effect_api/params.h"

using PF_FunctionSelector = A_long;
using PF_ArbCompareResult = A_long;
using PF_ArbPrintFlags = A_long;

inline constexpr PF_FunctionSelector PF_Arbitrary_NEW_FUNC = 0;
inline constexpr PF_FunctionSelector PF_Arbitrary_DISPOSE_FUNC = 1;
inline constexpr PF_FunctionSelector PF_Arbitrary_COPY_FUNC = 2;
inline constexpr PF_FunctionSelector PF_Arbitrary_FLAT_SIZE_FUNC = 3;
inline constexpr PF_FunctionSelector PF_Arbitrary_FLATTEN_FUNC = 4;
inline constexpr PF_FunctionSelector PF_Arbitrary_UNFLATTEN_FUNC = 5;
inline constexpr PF_FunctionSelector PF_Arbitrary_INTERP_FUNC = 6;
inline constexpr PF_FunctionSelector PF_Arbitrary_COMPARE_FUNC = 7;
inline constexpr PF_FunctionSelector PF_Arbitrary_PRINT_SIZE_FUNC = 8;
inline constexpr PF_FunctionSelector PF_Arbitrary_PRINT_FUNC = 9;
inline constexpr PF_FunctionSelector PF_Arbitrary_SCAN_FUNC = 10;

inline constexpr PF_ArbCompareResult PF_ArbCompare_EQUAL = 0;
inline constexpr PF_ArbCompareResult PF_ArbCompare_LESS = 1;
inline constexpr PF_ArbCompareResult PF_ArbCompare_MORE = 2;
inline constexpr PF_ArbCompareResult PF_ArbCompare_NOT_EQUAL = 3;

inline constexpr PF_ArbPrintFlags PF_ArbPrint_NONE = 0;
inline constexpr PF_ArbPrintFlags PF_ArbPrint_ABBREVIATED = 1;

/// `extra` of PF_Cmd_ARBITRARY_CALLBACK; which_function selects the member of the union. The effect writes
/// new handles, sizes and results where the pointers (arbPH, flat_data_sizePLu, compareP, ...) point; buffers
/// are the host's, of the given size in bytes.
struct PF_ArbParamsExtra {
    PF_FunctionSelector which_function;  // PF_Arbitrary_..._FUNC
    A_short id;                          // PF_ArbitraryDef::id of the control
    A_short padding;
    union {
        struct {
            void* refconPV;
            PF_ArbitraryH* arbPH;
        } new_func_params;
        struct {
            void* refconPV;
            PF_ArbitraryH arbH;
        } dispose_func_params;
        struct {
            void* refconPV;
            PF_ArbitraryH src_arbH;
            PF_ArbitraryH* dst_arbPH;
        } copy_func_params;
        struct {
            void* refconPV;
            PF_ArbitraryH arbH;
            A_u_long* flat_data_sizePLu;
        } flat_size_func_params;
        struct {
            void* refconPV;
            PF_ArbitraryH arbH;
            A_u_long buf_sizeLu;
            void* flat_dataPV;
        } flatten_func_params;
        struct {
            void* refconPV;
            A_u_long buf_sizeLu;
            const void* flat_dataPV;
            PF_ArbitraryH* arbPH;
        } unflatten_func_params;
        struct {
            void* refconPV;
            PF_ArbitraryH left_arbH;
            PF_ArbitraryH right_arbH;
            PF_FpLong tF;  // 0 is the left value, 1 the right
            PF_ArbitraryH* interpPH;
        } interp_func_params;
        struct {
            void* refconPV;
            PF_ArbitraryH a_arbH;
            PF_ArbitraryH b_arbH;
            PF_ArbCompareResult* compareP;
        } compare_func_params;
        struct {
            void* refconPV;
            PF_ArbitraryH arbH;
            A_u_long* print_sizePLu;
        } print_size_func_params;
        struct {
            void* refconPV;
            PF_ArbPrintFlags print_flags;
            PF_ArbitraryH arbH;
            A_u_long print_sizeLu;
            A_char* print_bufferPC;
        } print_func_params;
        struct {
            void* refconPV;
            const A_char* bufPC;
            A_u_long bytes_to_scanLu;
            PF_ArbitraryH* arbPH;
        } scan_func_params;
    } u;
};
static_assert(sizeof(PF_ArbParamsExtra) == 48 && alignof(PF_ArbParamsExtra) == 8);
static_assert(offsetof(PF_ArbParamsExtra, which_function) == 0);
static_assert(offsetof(PF_ArbParamsExtra, id) == 4);
static_assert(offsetof(PF_ArbParamsExtra, padding) == 6);
static_assert(offsetof(PF_ArbParamsExtra, u.new_func_params.refconPV) == 8);
static_assert(offsetof(PF_ArbParamsExtra, u.new_func_params.arbPH) == 16);
static_assert(offsetof(PF_ArbParamsExtra, u.dispose_func_params.refconPV) == 8);
static_assert(offsetof(PF_ArbParamsExtra, u.dispose_func_params.arbH) == 16);
static_assert(offsetof(PF_ArbParamsExtra, u.copy_func_params.refconPV) == 8);
static_assert(offsetof(PF_ArbParamsExtra, u.copy_func_params.src_arbH) == 16);
static_assert(offsetof(PF_ArbParamsExtra, u.copy_func_params.dst_arbPH) == 24);
static_assert(offsetof(PF_ArbParamsExtra, u.flat_size_func_params.refconPV) == 8);
static_assert(offsetof(PF_ArbParamsExtra, u.flat_size_func_params.arbH) == 16);
static_assert(offsetof(PF_ArbParamsExtra, u.flat_size_func_params.flat_data_sizePLu) == 24);
static_assert(offsetof(PF_ArbParamsExtra, u.flatten_func_params.refconPV) == 8);
static_assert(offsetof(PF_ArbParamsExtra, u.flatten_func_params.arbH) == 16);
static_assert(offsetof(PF_ArbParamsExtra, u.flatten_func_params.buf_sizeLu) == 24);
static_assert(offsetof(PF_ArbParamsExtra, u.flatten_func_params.flat_dataPV) == 32);
static_assert(offsetof(PF_ArbParamsExtra, u.unflatten_func_params.refconPV) == 8);
static_assert(offsetof(PF_ArbParamsExtra, u.unflatten_func_params.buf_sizeLu) == 16);
static_assert(offsetof(PF_ArbParamsExtra, u.unflatten_func_params.flat_dataPV) == 24);
static_assert(offsetof(PF_ArbParamsExtra, u.unflatten_func_params.arbPH) == 32);
static_assert(offsetof(PF_ArbParamsExtra, u.interp_func_params.refconPV) == 8);
static_assert(offsetof(PF_ArbParamsExtra, u.interp_func_params.left_arbH) == 16);
static_assert(offsetof(PF_ArbParamsExtra, u.interp_func_params.right_arbH) == 24);
static_assert(offsetof(PF_ArbParamsExtra, u.interp_func_params.tF) == 32);
static_assert(offsetof(PF_ArbParamsExtra, u.interp_func_params.interpPH) == 40);
static_assert(offsetof(PF_ArbParamsExtra, u.compare_func_params.refconPV) == 8);
static_assert(offsetof(PF_ArbParamsExtra, u.compare_func_params.a_arbH) == 16);
static_assert(offsetof(PF_ArbParamsExtra, u.compare_func_params.b_arbH) == 24);
static_assert(offsetof(PF_ArbParamsExtra, u.compare_func_params.compareP) == 32);
static_assert(offsetof(PF_ArbParamsExtra, u.print_size_func_params.refconPV) == 8);
static_assert(offsetof(PF_ArbParamsExtra, u.print_size_func_params.arbH) == 16);
static_assert(offsetof(PF_ArbParamsExtra, u.print_size_func_params.print_sizePLu) == 24);
static_assert(offsetof(PF_ArbParamsExtra, u.print_func_params.refconPV) == 8);
static_assert(offsetof(PF_ArbParamsExtra, u.print_func_params.print_flags) == 16);
static_assert(offsetof(PF_ArbParamsExtra, u.print_func_params.arbH) == 24);
static_assert(offsetof(PF_ArbParamsExtra, u.print_func_params.print_sizeLu) == 32);
static_assert(offsetof(PF_ArbParamsExtra, u.print_func_params.print_bufferPC) == 40);
static_assert(offsetof(PF_ArbParamsExtra, u.scan_func_params.refconPV) == 8);
static_assert(offsetof(PF_ArbParamsExtra, u.scan_func_params.bufPC) == 16);
static_assert(offsetof(PF_ArbParamsExtra, u.scan_func_params.bytes_to_scanLu) == 24);
static_assert(offsetof(PF_ArbParamsExtra, u.scan_func_params.arbPH) == 32);
