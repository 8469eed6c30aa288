#include "effect/identity/effect_strings.h"

#include <cstddef>

#include "effect/identity/effect_string_table.h"

namespace flumo {

const char* GetStringPtr(A_long row) {
    return EffectStringTable[static_cast<size_t>(row)].text;
}

}  // namespace flumo
