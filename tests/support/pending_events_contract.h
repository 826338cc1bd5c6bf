// What every PendingEvents does. A harness holds one as `events`, brings up an event by Post(function) and
// ends the program by End(); Inside(function) runs the function as a handler of the running program.
#pragma once

#include "components/pending_events.h"

#include <gtest/gtest.h>

namespace kestrune {

template <typename Harness>
class PendingEventsContract : public testing::Test {
protected:
    Harness harness;
};

TYPED_TEST_SUITE_P(PendingEventsContract);

TYPED_TEST_P(PendingEventsContract, RunRunsWhatWaits) {
    int runs = 0;
    this->harness.Post([&] { ++runs; });
    EXPECT_EQ(runs, 0);
    this->harness.events.Run();
    EXPECT_EQ(runs, 1);
    this->harness.events.Run();
    EXPECT_EQ(runs, 1);
}

TYPED_TEST_P(PendingEventsContract, ASpanRunsWhatWaitsAndPasses) {
    for (const int ms : {20, 0, -1}) {
        int runs = 0;
        this->harness.Post([&] { ++runs; });
        EXPECT_TRUE(this->harness.events.RunFor(ms)) << ms;
        EXPECT_EQ(runs, 1) << ms;
    }
}

TYPED_TEST_P(PendingEventsContract, AHandlerMayWaitItself) {
    bool isInnerThrough = false;
    this->harness.Post([&] {
        this->harness.Post([&] { isInnerThrough = true; });
        EXPECT_TRUE(this->harness.events.RunFor(20));
    });
    EXPECT_TRUE(this->harness.events.RunFor(10));
    EXPECT_TRUE(isInnerThrough);
}

TYPED_TEST_P(PendingEventsContract, TheEndOfTheProgramEndsEverySpan) {
    this->harness.Inside([&] {
        this->harness.Post([&] { this->harness.End(); });
        EXPECT_FALSE(this->harness.events.RunFor(30000));
        EXPECT_FALSE(this->harness.events.RunFor(30000)) << "a loop that polls must learn of it";
    });
}

REGISTER_TYPED_TEST_SUITE_P(PendingEventsContract, RunRunsWhatWaits, ASpanRunsWhatWaitsAndPasses,
                            AHandlerMayWaitItself, TheEndOfTheProgramEndsEverySpan);

} // namespace kestrune
