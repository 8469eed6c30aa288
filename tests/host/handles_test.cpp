#include "host/handles.h"

#include <gtest/gtest.h>

#include <cstring>

namespace flumo::host {
namespace {

using Disposal = HandleTable::Disposal;

TEST(Handles, AreEmptyOnceDisposedAndNeverReusedAfterDamage) {
    HandleTable table;
    for (const uint64_t size : {1u, 8u, 100000u}) {
        const PF_Handle handle = table.create(size);
        EXPECT_EQ(table.size(handle), size);
        EXPECT_EQ(table.lock(handle), *handle);
        EXPECT_TRUE(table.unlock(handle));
        static_cast<std::byte*>(*handle)[size] ^= std::byte{1};
        EXPECT_EQ(table.dispose(handle), Disposal::kOverrun) << size;
        EXPECT_EQ(*handle, nullptr);
        EXPECT_EQ(table.lock(handle), nullptr);
        EXPECT_EQ(table.dispose(table.create(size)), Disposal::kDone) << "damaged memory is handed out again";
    }
    EXPECT_EQ(table.lock(nullptr), nullptr);
}

TEST(Handles, ResizeKeepsTheContentUnlessLocked) {
    HandleTable table;
    const PF_Handle handle = table.create(4);
    std::memcpy(*handle, "abc", 4);
    ASSERT_TRUE(table.resize(handle, 200000));
    EXPECT_STREQ(static_cast<char*>(*handle), "abc");
    ASSERT_TRUE(table.resize(handle, 2));
    EXPECT_EQ(std::memcmp(*handle, "ab", 2), 0);
    table.lock(handle);
    EXPECT_FALSE(table.resize(handle, 8));
}

TEST(Handles, SmallBlocksHoldJunkAndLargeOnesAreReused) {
    HandleTable table;
    const PF_Handle small = table.create(16);
    EXPECT_NE(static_cast<unsigned char*>(*small)[0], 0);
    const PF_Handle large = table.create(1 << 20);
    void* memory = *large;
    table.dispose(large);
    EXPECT_EQ(*table.create(1 << 20), memory);
    EXPECT_EQ(table.create(UINT64_MAX), nullptr);
}

}  // namespace
}  // namespace flumo::host
