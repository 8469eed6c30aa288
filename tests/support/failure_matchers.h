// Failures as tests look at them.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "base/failure.h"

namespace flumo::test {

/// Runs `action` and checks that it fails with this status and one line that contains `part`.
template <typename Action>
testing::AssertionResult fails_with(const Action& action, FailureKind status, const std::string& part) try {
    action();
    return testing::AssertionFailure() << "no failure";
} catch (const Failure& failure) {
    const std::string message = failure.what();
    if (failure.kind() == status && message.find(part) != std::string::npos &&
        message.find('\n') == std::string::npos) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "status " << static_cast<int>(failure.kind()) << ": " << message;
}

#define EXPECT_FAILURE(expression, status, part) \
    EXPECT_TRUE(flumo::test::fails_with([&] { static_cast<void>(expression); }, status, part))

}  // namespace flumo::test
