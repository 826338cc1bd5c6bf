// The events of the running program, and the fake that stands for them.
#include "program/application_events.h"

#include "support/fake_pending_events.h"
#include "support/pending_events_contract.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <functional>
#include <utility>

namespace kestrune {
namespace {

struct RealEvents {
    ApplicationEvents events;
    void Post(const std::function<void()>& handler) {
        QMetaObject::invokeMethod(QCoreApplication::instance(), handler, Qt::QueuedConnection);
    }
    void End() { QCoreApplication::exit(); }
    void Inside(const std::function<void()>& handler) {
        Post(handler);
        QCoreApplication::exec();
    }
};

struct FakeEvents {
    FakePendingEvents events;
    void Post(std::function<void()> handler) {
        events.onRun = [this, handler = std::move(handler)] {
            const std::function<void()> once = handler;
            events.onRun = nullptr;
            once();
        };
    }
    void End() { events.isEnding = true; }
    void Inside(const std::function<void()>& handler) { handler(); }
};

using Implementations = testing::Types<RealEvents, FakeEvents>;
INSTANTIATE_TYPED_TEST_SUITE_P(Both, PendingEventsContract, Implementations);

TEST(ApplicationEvents, ASpanIsWaitedForAndEventsThatComeUpMeanwhileRun) {
    ApplicationEvents events;
    int ticks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] { ++ticks; });
    timer.start(5);
    QElapsedTimer passed;
    passed.start();
    EXPECT_TRUE(events.RunFor(100));
    EXPECT_GE(passed.elapsed(), 100);
    EXPECT_GE(ticks, 2);
}

} // namespace
} // namespace kestrune
