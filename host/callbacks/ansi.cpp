// The C library as the host offers it. The mathematical functions are the system's own and not counted.
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "host/callbacks/answer.h"
#include "host/callbacks/tables.h"

namespace flumo::host {

namespace {

int counted_sprintf(A_char* text, const A_char* format, ...) {
    if (Call* call = current_call()) count_call(*call, Callback::kSprintf);
    std::va_list arguments;
    va_start(arguments, format);
    const int length = std::vsprintf(text, format, arguments);
    va_end(arguments);
    return length;
}

A_char* counted_strcpy(A_char* to, const A_char* from) {
    if (Call* call = current_call()) count_call(*call, Callback::kStrcpy);
    return std::strcpy(to, from);
}

template <class Table>
Table filled_table() {
    Table table{};
    table.atan = ::atan;
    table.atan2 = ::atan2;
    table.ceil = ::ceil;
    table.cos = ::cos;
    table.exp = ::exp;
    table.fabs = ::fabs;
    table.floor = ::floor;
    table.fmod = ::fmod;
    table.hypot = ::hypot;
    table.log = ::log;
    table.log10 = ::log10;
    table.pow = ::pow;
    table.sin = ::sin;
    table.sqrt = ::sqrt;
    table.tan = ::tan;
    table.sprintf = counted_sprintf;
    table.strcpy = counted_strcpy;
    table.asin = ::asin;
    table.acos = ::acos;
    return table;
}

}  // namespace

PF_ANSICallbacksBlock ansi_block() {
    return filled_table<PF_ANSICallbacksBlock>();
}

const PF_ANSICallbacksSuite1& ansi_suite() {
    static const auto suite = filled_table<PF_ANSICallbacksSuite1>();
    return suite;
}

}  // namespace flumo::host
