// The identities of the controls, which saved projects depend on.
#include "effect/params/param_ids.h"

#include <gmock/gmock.h>

#include <functional>
#include <set>
#include <stdexcept>
#include <string>

#include "control_facts.h"

namespace flumo {
namespace {

using test::ControlFact;
using test::kControlFacts;

std::string MessageOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "nothing thrown";
}

TEST(ParamIds, EveryControlKeepsItsSectionIdIndexAndDiskId) {
    ASSERT_EQ(std::size(kControlFacts), 86U);
    for (const ControlFact& fact : kControlFacts) {
        EXPECT_EQ(GetMainParamId(static_cast<A_u_long>(fact.index) - 1), fact.id);
        EXPECT_EQ(GetParamIndex(fact.id), fact.index) << fact.id;
        EXPECT_EQ(GetParamDiskId(fact.id), fact.disk_id) << fact.id;
    }
}

// Numbers that once belonged to other controls would bring foreign values out of old projects.
TEST(ParamIds, RetiredDiskIdsStayRetired) {
    std::set<int> unused;
    for (int id = 1; id <= 119; ++id)
        unused.insert(id);
    for (const ControlFact& fact : kControlFacts)
        unused.erase(GetParamDiskId(fact.id));
    std::set<int> retired = {1, 2, 3, 9, 10, 11, 16, 26, 37, 40, 46, 48, 56, 66};
    for (int id = 30; id <= 35; ++id)
        retired.insert(id);
    for (int id = 69; id <= 81; ++id)
        retired.insert(id);
    EXPECT_EQ(unused, retired);
}

TEST(ParamIds, BlendModeHasADiskIdAndNothingElse) {
    EXPECT_EQ(GetParamDiskId("BlendMode"), 1);
    EXPECT_EQ(MessageOf([] { GetParamIndex("BlendMode"); }),
              "Failed to find the parameter index for id \"BlendMode\"");
}

TEST(ParamIds, UnknownNamesAndNumbersSayWhatWasAskedFor) {
    EXPECT_EQ(MessageOf([] { GetMainParamId(86); }), "Failed to get Id for section MainParams");
    EXPECT_EQ(MessageOf([] { GetMainParamId(0xFFFFFFFF); }), "Failed to get Id for section MainParams");
    for (const std::string id : {"AlphaThreshold", "noisetype", "", "NoiseType ", "Noise"}) {
        EXPECT_EQ(MessageOf([&] { GetParamIndex(id); }),
                  "Failed to find the parameter index for id \"" + id + "\"");
        EXPECT_EQ(MessageOf([&] { GetParamDiskId(id); }),
                  "Failed to find the disk ID for parameter id \"" + id + "\"");
    }
}

}  // namespace
}  // namespace flumo
