// The handles that the host keeps for each instance, and the bytes of them that projects store. What the
// handlers make of a host that fails is the fault sweep's to see.
#include "effect/entry/sequence.h"

#include <gmock/gmock.h>

#include "tests/support/hosted_call.h"

namespace flumo::test {
namespace {

using Handler = PF_Err (*)(PF_InData*, PF_OutData*);

/// A host that holds a live handle of an instance.
struct InstanceHost : HostedCall {
    InstanceHost() { in_data.sequence_data = host.handles().create(1); }
    PF_Err Run(Handler handler) { return handler(&in_data, &out_data); }
    bool LiveIsKept() { return host.handles().lives(in_data.sequence_data); }
    std::vector<int> Made() {
        const auto* bytes = static_cast<const uint8_t*>(*out_data.sequence_data);
        return {bytes, bytes + host.handles().size(out_data.sequence_data)};
    }
};

TEST(Sequence, LiveHandleIsOneZeroByteAndTheOldOneTheHosts) {
    for (const Handler handler : {SequenceSetup, SequenceResetup}) {
        InstanceHost host;
        EXPECT_EQ(host.Run(handler), 0);
        EXPECT_NE(host.out_data.sequence_data, host.in_data.sequence_data);
        EXPECT_EQ(host.Made(), std::vector{0});
        EXPECT_TRUE(host.LiveIsKept() && host.Tidy());
    }
    InstanceHost host;
    host.in_data.sequence_data = nullptr;
    EXPECT_EQ(host.Run(SequenceSetup), 0);
    EXPECT_EQ(host.Made(), std::vector{0});
}

TEST(Sequence, FlatRecordReplacesTheLiveHandleAndIsWhatProjectsStore) {
    InstanceHost host;
    EXPECT_EQ(host.Run(SequenceFlatten), 0);
    EXPECT_THAT(host.Made(),
                testing::ElementsAre(1, 'T', 'E', 'M', 'P', 0, 0, 0, 8, 0, 0, 0, 0x00, 0xA6, 0x08, 0x00));
    EXPECT_TRUE(!host.LiveIsKept() && host.Tidy());
}

TEST(Sequence, FlattenedCopyLeavesTheLiveHandleAndItsOwnBytesAlone) {
    InstanceHost host;
    EXPECT_EQ(host.Run(GetFlattenedSequenceData), 0);
    const std::vector<int> fill = host.Made();
    EXPECT_EQ(fill, std::vector(16, fill[0]));
    EXPECT_TRUE(host.LiveIsKept() && host.Tidy());
}

TEST(Sequence, SetdownDisposesAndLeavesTheAnswerAlone) {
    InstanceHost host;
    host.out_data.sequence_data = host.in_data.sequence_data;
    EXPECT_EQ(host.Run(SequenceSetdown), 0);
    EXPECT_FALSE(host.LiveIsKept());
    EXPECT_EQ(host.out_data.sequence_data, host.in_data.sequence_data);
    EXPECT_TRUE(host.Tidy());
}

// The handlers answer the same lack with different numbers, and hosts are used to them.
TEST(Sequence, NothingToWorkOnEndsInAnOddResultAndChangesNothing) {
    void* nothing = nullptr;
    struct Case {
        Handler handler;
        PF_Handle given;
        PF_Err result;
    };
    for (const Case& c : {Case{SequenceSetdown, nullptr, 0}, Case{SequenceResetup, nullptr, 0},
                          Case{SequenceResetup, &nothing, 0}, Case{SequenceFlatten, nullptr, 512},
                          Case{SequenceFlatten, &nothing, 0}, Case{GetFlattenedSequenceData, nullptr, 512},
                          Case{GetFlattenedSequenceData, &nothing, 0}}) {
        InstanceHost host;
        host.in_data.sequence_data = c.given;
        host.host.faults().fail_every(host::Callback::kAcquireSuite, host::FaultMode::kError);
        EXPECT_EQ(host.Run(c.handler), c.result);
        EXPECT_EQ(host.out_data.sequence_data, nullptr);
        EXPECT_EQ(host.host.handles().live_count(), 1U);
        EXPECT_TRUE(host.Tidy());
    }
}

}  // namespace
}  // namespace flumo::test
