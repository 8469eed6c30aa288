#include "effect/gradient/value/gradient_text.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <sstream>

#include "effect_api/commands.h"

namespace flumo {
namespace {

constexpr const char* kHeader = "Gradient";
// Indexed by StopKind.
constexpr std::array<const char*, 3> kKindWords = {"linear", "sin", "edge"};

bool ReadWord(std::istream& text, const char* expected) {
    std::string word;
    text >> word;
    return word == expected;
}

bool ReadField(std::istream& text, const char* name, float& value) {
    if (!ReadWord(text, name)) return false;
    text >> value;
    return true;
}

bool ReadKind(std::istream& text, int32_t& kind) {
    std::string word;
    text >> word;
    const auto found = std::find(kKindWords.begin(), kKindWords.end(), word);
    kind = static_cast<int32_t>(std::distance(kKindWords.begin(), found));
    return found != kKindWords.end();
}

bool ReadStop(std::istream& text, float& position, GradientStop& stop) {
    return ReadField(text, "t", position) && ReadKind(text, stop.kind) && ReadField(text, "r", stop.r) &&
           ReadField(text, "g", stop.g) && ReadField(text, "b", stop.b) && ReadField(text, "a", stop.a);
}

}  // namespace

std::string FormatGradientText(const GradientStopMap& stops) {
    std::ostringstream text;
    text << kHeader;
    for (const auto& [position, stop] : stops) {
        text << " t " << position;
        if (stop.kind >= kStopLinear && stop.kind <= kStopEdge)
            text << ' ' << kKindWords[static_cast<size_t>(stop.kind)] << ' ';
        text << " r " << stop.r << " g " << stop.g << " b " << stop.b << " a " << stop.a;
    }
    return text.str();
}

PF_Err ParseGradientText(std::istream& text, GradientStopMap& stops) {
    if (!ReadWord(text, kHeader)) return PF_Err_UNRECOGNIZED_PARAM_TYPE;
    while (!text.eof()) {
        float position = 0.0F;
        GradientStop stop;
        if (!ReadStop(text, position, stop)) return PF_Err_UNRECOGNIZED_PARAM_TYPE;
        stops[position] = stop;
    }
    return PF_Err_NONE;
}

}  // namespace flumo
