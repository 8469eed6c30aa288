// The handles that the host keeps for each instance, and the bytes of them that projects store.
#include "effect/entry/sequence.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "fake_host.h"

namespace flumo {
namespace {

using test::FakeHost;
using testing::Each;

using Handler = PF_Err (*)(PF_InData*, PF_OutData*);

std::vector<int> BytesOf(FakeHost& host, PF_Handle handle) {
    std::vector<int> bytes;
    for (const std::byte byte : host.At(handle).bytes)
        bytes.push_back(static_cast<int>(byte));
    return bytes;
}

/// A host that holds a live handle of an instance.
struct InstanceHost : FakeHost {
    InstanceHost() { in_data.sequence_data = NewHandle(1); }
    PF_Err Run(Handler handler) { return handler(&in_data, &out_data); }
    PF_Handle Made() const { return out_data.sequence_data; }
};

TEST(Sequence, LiveHandleIsOneZeroByte) {
    for (const Handler handler : {SequenceSetup, SequenceResetup}) {
        InstanceHost host;
        const PF_Handle old = host.in_data.sequence_data;
        EXPECT_EQ(host.Run(handler), 0);
        ASSERT_NE(host.Made(), nullptr);
        EXPECT_NE(host.Made(), old);
        EXPECT_EQ(BytesOf(host, host.Made()), std::vector{0});
        EXPECT_EQ(host.Count("dispose"), 0) << "the old handle is the host's";
        EXPECT_TRUE(host.AllGivenBack());
    }
}

TEST(Sequence, FlatRecordIsWhatProjectsStore) {
    InstanceHost host;
    const PF_Handle live = host.in_data.sequence_data;
    EXPECT_EQ(host.Run(SequenceFlatten), 0);
    ASSERT_NE(host.Made(), nullptr);
    EXPECT_THAT(BytesOf(host, host.Made()),
                testing::ElementsAre(1, 'T', 'E', 'M', 'P', 0, 0, 0, 8, 0, 0, 0, 0x00, 0xA6, 0x08, 0x00));
    EXPECT_FALSE(host.blocks.contains(live)) << "replaced";
    EXPECT_TRUE(host.AllGivenBack());
}

TEST(Sequence, FlattenedCopyLeavesTheLiveHandleAndItsOwnBytesAlone) {
    InstanceHost host;
    const PF_Handle live = host.in_data.sequence_data;
    EXPECT_EQ(host.Run(GetFlattenedSequenceData), 0);
    ASSERT_NE(host.Made(), nullptr);
    EXPECT_EQ(host.At(host.Made()).bytes.size(), 16U);
    EXPECT_THAT(BytesOf(host, host.Made()), Each(0xA5));
    EXPECT_TRUE(host.blocks.contains(live));
    EXPECT_TRUE(host.AllGivenBack());
}

TEST(Sequence, SetdownDisposesAndLeavesTheAnswerAlone) {
    InstanceHost host;
    const PF_Handle live = host.in_data.sequence_data;
    host.out_data.sequence_data = live;
    EXPECT_EQ(host.Run(SequenceSetdown), 0);
    EXPECT_TRUE(host.blocks.empty());
    EXPECT_EQ(host.Made(), live);
    host.in_data.sequence_data = nullptr;
    EXPECT_EQ(host.Run(SequenceSetdown), 0);
    EXPECT_EQ(host.Count("dispose"), 1);
}

enum class Lack { kNoHandle, kEmptied, kNoMemory, kNoLock };

struct OddResult {
    const char* name;
    Handler handler;
    Lack lack;
    PF_Err result;
};

// The handlers answer the same lack with different numbers, and hosts are used to them.
const OddResult kOddResults[] = {
    {"setup without memory", SequenceSetup, Lack::kNoMemory, 4},
    {"setup without a lock", SequenceSetup, Lack::kNoLock, 0},
    {"resetup without a handle", SequenceResetup, Lack::kNoHandle, 0},
    {"resetup of an emptied handle", SequenceResetup, Lack::kEmptied, 0},
    {"resetup without memory", SequenceResetup, Lack::kNoMemory, 0},
    {"resetup without a lock", SequenceResetup, Lack::kNoLock, 0},
    {"flatten without a handle", SequenceFlatten, Lack::kNoHandle, 512},
    {"flatten of an emptied handle", SequenceFlatten, Lack::kEmptied, 0},
    {"flatten without memory", SequenceFlatten, Lack::kNoMemory, 512},
    {"flatten without a lock", SequenceFlatten, Lack::kNoLock, 0},
    {"flattened copy without a handle", GetFlattenedSequenceData, Lack::kNoHandle, 512},
    {"flattened copy of an emptied handle", GetFlattenedSequenceData, Lack::kEmptied, 0},
    {"flattened copy without memory", GetFlattenedSequenceData, Lack::kNoMemory, 512},
    {"flattened copy without a lock", GetFlattenedSequenceData, Lack::kNoLock, 0},
};

TEST(Sequence, LackEndsInItsOddResultAndChangesNothing) {
    for (const OddResult& odd : kOddResults) {
        SCOPED_TRACE(odd.name);
        InstanceHost host;
        void* nothing = nullptr;
        if (odd.lack == Lack::kNoHandle) host.in_data.sequence_data = nullptr;
        if (odd.lack == Lack::kEmptied) host.in_data.sequence_data = &nothing;
        if (odd.lack == Lack::kNoMemory) host.fail_new = 1;
        if (odd.lack == Lack::kNoLock) host.fail_lock = 1;
        EXPECT_EQ(host.Run(odd.handler), odd.result);
        EXPECT_EQ(host.Made(), nullptr);
        EXPECT_EQ(host.Count("dispose"), 0);
        EXPECT_TRUE(host.AllGivenBack());
    }
}

TEST(Sequence, SetupNeedsNoHandleBefore) {
    InstanceHost host;
    host.in_data.sequence_data = nullptr;
    EXPECT_EQ(host.Run(SequenceSetup), 0);
    EXPECT_NE(host.Made(), nullptr);
}

}  // namespace
}  // namespace flumo
