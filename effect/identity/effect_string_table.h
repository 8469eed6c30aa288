// The rows that GetStringPtr returns, visible to the compiler so that references to rows are checked when
// building.
#pragma once

#include <array>
#include <cstddef>

#include "effect_api/types.h"

namespace flumo {

/// One text and its own row number. Texts end with a zero.
struct EffectString {
    A_long index;
    A_char text[256];
};
static_assert(sizeof(EffectString) == 260);

/// Row 0 is empty. Nothing reads rows 3 to 10 and 91; they keep the numbers of the rows after them. From row
/// 11 on come the labels of the controls in their order: the name, then a checkbox's side label, which is
/// empty, or a popup's choices.
inline constexpr std::array<EffectString, 109> EffectStringTable{{
    {0, ""},
    {1, "Flumo"},
    {2, "Procedural noise and isolines, drawn on the GPU."},
    {3, "All Dependencies requested."},
    {4, "Missing Dependencies requested."},
    {5, "Error loading suite."},
    {6, "Error releasing suite."},
    {7, "Blending Mode"},
    {8, "Normal|Add"},
    {9, "Multisampling"},
    {10, "None|4 samples"},
    {11, "Base Noise"},
    {12, "Noise Type"},
    {13, "Fluid|Voronoi|Smoke|Worley"},
    {14, "Noise Contrast"},
    {15, "Noise Brightness"},
    {16, "Offset X"},
    {17, "Offset Y"},
    {18, "Evolution"},
    {19, "Loop Evolution"},
    {20, ""},
    {21, "Complexity"},
    {22, "Speed"},
    {23, "Scale"},
    {24, "Scale X"},
    {25, "Scale Y"},
    {26, "Layer Multiplier"},
    {27, "Layer Multiply"},
    {28, "Layer Lightness Invert"},
    {29, ""},
    {30, "Layer Alpha Invert"},
    {31, ""},
    {32, "Layer Multiplier"},
    {33, "Layer Add"},
    {34, "Layer Lightness Invert"},
    {35, ""},
    {36, "Layer Alpha Invert"},
    {37, ""},
    {38, "Colorize Noise"},
    {39, "Draw Noise"},
    {40, ""},
    {41, "Colorize Mode"},
    {42, "Gradient|Gradient From Layer|Reflection From Layer|Refraction From Layer"},
    {43, "Noise Gradient"},
    {44, "Noise Cut"},
    {45, "Noise Bottom Cut Enabled"},
    {46, ""},
    {47, "Noise Bottom Cut Threshold"},
    {48, "Noise Bottom Cut Feather"},
    {49, "Noise Top Cut Enabled"},
    {50, ""},
    {51, "Noise Top Cut Threshold"},
    {52, "Noise Top Cut Feather"},
    {53, "Alpha Threshold"},
    {54, "Layer Gradient"},
    {55, "Noise Gradient Offset"},
    {56, "Noise Gradient Scale"},
    {57, "Noise Gradient Scale Base"},
    {58, "Noise Gradient Loop"},
    {59, ""},
    {60, "Gradient Randomize Amplitude"},
    {61, "Gradient Randomize Frequency"},
    {62, "Reflection Scale"},
    {63, "Lines"},
    {64, "Draw Lines"},
    {65, ""},
    {66, "Lines Blend Mode"},
    {67, "Normal|Add|Multiply"},
    {68, "Lines Count"},
    {69, "Line Width"},
    {70, "Lines Offset"},
    {71, "Offset loop"},
    {72, ""},
    {73, "Lines Cut"},
    {74, "Lines Bottom Cut Enabled"},
    {75, ""},
    {76, "Lines Bottom Cut Threshold"},
    {77, "Lines Bottom Cut Feather"},
    {78, "Lines Top Cut Enabled"},
    {79, ""},
    {80, "Lines Top Cut Threshold"},
    {81, "Lines Top Cut Feather"},
    {82, "Lines Gradient"},
    {83, "Lines Gradient Offset"},
    {84, "Lines Gradient Scale"},
    {85, "Lines Gradient Scale Base"},
    {86, "Lines Gradient Loop"},
    {87, ""},
    {88, "Lines Alpha"},
    {89, "Lines Alpha Noise"},
    {90, "Alpha Noise Type"},
    {91, "Fluid|Noise2|Voronoi|Smoke|Worley"},
    {92, "Lines Alpha Threshold"},
    {93, "Alpha Noise Offset X"},
    {94, "Alpha Noise Offset Y"},
    {95, "Alpha Noise Evolution"},
    {96, "Alpha Noise Loop Evolution"},
    {97, ""},
    {98, "Alpha Noise Complexity"},
    {99, "Alpha Noise Speed"},
    {100, "Alpha Noise Scale"},
    {101, "Alpha Noise Scale X"},
    {102, "Alpha Noise Scale Y"},
    {103, "Alpha Randomize"},
    {104, "Randomize"},
    {105, "Lines Randomize"},
    {106, "Width Randomize"},
    {107, "Gradient Randomize"},
    {108, "Random Seed"},
}};

consteval bool IndicesMatchRows() {
    for (size_t row = 0; row < EffectStringTable.size(); ++row) {
        if (EffectStringTable[row].index != static_cast<A_long>(row)) return false;
    }
    return true;
}
static_assert(IndicesMatchRows());

}  // namespace flumo
