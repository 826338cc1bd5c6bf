// Tests that listen: a take in which the sound ran dry for want of the processor says nothing.
#pragma once

#include <functional>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>
#include <iostream>
#include <string>

namespace kestrune {

// Runs `take` until it passes, or fails though nothing disturbed it, at most eight times. `disturbance` says
// what disturbed the take that has just failed, empty for nothing; `again` makes everything new for the next.
inline void TakeUndisturbed(const std::function<void()>& take,
                            const std::function<std::string()>& disturbance,
                            const std::function<void()>& again) {
    constexpr int mostTakes = 8;
    for (int number = 1;; ++number) {
        testing::TestPartResultArray results;
        {
            const testing::ScopedFakeTestPartResultReporter reporter(
                testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &results);
            take();
        }
        bool hasFailed = false;
        for (int i = 0; i < results.size(); ++i) {
            hasFailed = hasFailed || results.GetTestPartResult(i).failed();
        }
        const std::string what = hasFailed ? disturbance() : std::string();
        if (hasFailed && !what.empty() && number < mostTakes) {
            std::cout << "take " << number << " is void: " << what << '\n';
            again();
            continue;
        }
        for (int i = 0; i < results.size(); ++i) {
            const testing::TestPartResult& result = results.GetTestPartResult(i);
            if (result.failed()) {
                ADD_FAILURE_AT(result.file_name(), result.line_number())
                    << result.message() << (what.empty() ? "" : "\nno take was undisturbed: ") << what;
            }
        }
        return;
    }
}

} // namespace kestrune
