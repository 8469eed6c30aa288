// Who the effect says it is: version, flags, texts.
#include "effect/identity/identity.h"

#include <gmock/gmock.h>

#include <map>
#include <set>
#include <string>

#include "effect/identity/effect_string_table.h"
#include "effect/identity/effect_strings.h"

namespace flumo {
namespace {

unsigned Bits(unsigned number, int first, int last) {
    return number >> first & ((1U << (last - first + 1)) - 1);
}

std::set<int> BitsOf(A_long flags) {
    std::set<int> bits;
    for (int bit = 0; bit < 32; ++bit) {
        if (static_cast<A_u_long>(flags) >> bit & 1) bits.insert(bit);
    }
    return bits;
}

TEST(Identity, VersionIs114ReleaseInTheHostsPacking) {
    EXPECT_EQ(Bits(kEffectVersion, 0, 8), 0U) << "build";
    EXPECT_EQ(Bits(kEffectVersion, 9, 10), 3U) << "stage";
    EXPECT_EQ(Bits(kEffectVersion, 11, 14), 4U) << "bug fix";
    EXPECT_EQ(Bits(kEffectVersion, 15, 18), 1U) << "sub-version";
    EXPECT_EQ(kEffectVersion >> 19, 1U) << "version";
}

TEST(Identity, FlagsAreTheseBitsAndNoOthers) {
    EXPECT_THAT(BitsOf(kOutFlags), testing::ElementsAre(4, 5, 6, 10, 15, 25));
    EXPECT_THAT(BitsOf(kOutFlags2), testing::ElementsAre(10, 12, 23, 27));
}

// Rows that hosts and projects never see move when a label is added; these must not.
TEST(EffectStrings, FixedRowsKeepTheirTexts) {
    const std::map<A_long, std::string> fixed = {
        {0, ""},
        {1, "Flumo"},
        {3, "All Dependencies requested."},
        {4, "Missing Dependencies requested."},
        {5, "Error loading suite."},
        {6, "Error releasing suite."},
        {7, "Blending Mode"},
        {8, "Normal|Add"},
        {9, "Multisampling"},
        {10, "None|4 samples"},
        {11, "Base Noise"},
        {91, "Fluid|Noise2|Voronoi|Smoke|Worley"},
        {108, "Random Seed"},
    };
    for (const auto& [row, text] : fixed)
        EXPECT_EQ(GetStringPtr(row), text) << "row " << row;
    EXPECT_EQ(EffectStringTable.size(), 109U);
}

// The notice goes through the host's sprintf as an argument into 256 bytes, behind the name and version.
TEST(EffectStrings, NoticeFitsTheAboutBox) {
    const std::string notice = GetStringPtr(kNoticeRow);
    EXPECT_FALSE(notice.empty());
    EXPECT_LT(notice.size(), 200U);
    EXPECT_EQ(notice.find_first_of("\r\n"), std::string::npos);
}

}  // namespace
}  // namespace flumo
