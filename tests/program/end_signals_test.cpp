#include "program/end_signals.h"

#include <QCoreApplication>
#include <QTimer>
#include <QtTest/QtTest>
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

namespace kestrune {
namespace {

TEST(EndSignals, EachOfThemIsHeardByTheEventLoop) {
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        EndSignals signals_;
        QSignalSpy heard(&signals_, &EndSignals::EndRequested);
        ASSERT_EQ(::raise(number), 0);
        EXPECT_EQ(heard.size(), 0) << "not from within the handler";
        EXPECT_TRUE(heard.size() == 1 || heard.wait(5000)) << number;
    }
}

TEST(EndSignals, SeveralAtOnceAreOneRequest) {
    EndSignals signals_;
    QSignalSpy heard(&signals_, &EndSignals::EndRequested);
    for (int i = 0; i < 100; ++i) {
        ASSERT_EQ(::raise(i % 2 == 0 ? SIGTERM : SIGINT), 0);
    }
    EXPECT_TRUE(heard.wait(5000));
    QCoreApplication::processEvents();
    EXPECT_EQ(heard.size(), 1);
}

TEST(EndSignals, MoreThanThePipeHoldsBlocksNobody) {
    EndSignals signals_;
    QSignalSpy heard(&signals_, &EndSignals::EndRequested);
    for (int i = 0; i < 100000; ++i) {
        ASSERT_EQ(::raise(SIGTERM), 0);
    }
    EXPECT_TRUE(heard.wait(5000));
}

TEST(EndSignals, OneThatWasIgnoredStaysIgnored) {
    std::signal(SIGHUP, SIG_IGN);
    {
        EndSignals signals_;
        QSignalSpy heard(&signals_, &EndSignals::EndRequested);
        ASSERT_EQ(::raise(SIGHUP), 0);
        EXPECT_FALSE(heard.wait(100));
    }
    EXPECT_EQ(std::signal(SIGHUP, SIG_DFL), SIG_IGN);
}

TEST(EndSignals, AfterwardsASignalEndsTheProcessAsBefore) {
    const pid_t child = ::fork();
    if (child == 0) {
        { EndSignals signals_; }
        ::raise(SIGTERM);
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM);
}

// A program that is started gets the signals as they were.
TEST(EndSignals, AStartedProgramEndsByThem) {
    EndSignals signals_;
    QProcess program;
    program.start(QStringLiteral("sleep"), {QStringLiteral("30")});
    ASSERT_TRUE(program.waitForStarted());
    program.terminate();
    EXPECT_TRUE(program.waitForFinished(5000));
    EXPECT_EQ(program.exitStatus(), QProcess::CrashExit);
}

} // namespace
} // namespace kestrune
