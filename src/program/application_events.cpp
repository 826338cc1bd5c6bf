#include "program/application_events.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>

namespace kestrune {

void ApplicationEvents::Run() {
    QCoreApplication::processEvents();
}

bool ApplicationEvents::RunFor(int ms) {
    bool hasPassed = false;
    QEventLoop loop;
    QTimer timer;
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, &loop, [&hasPassed, &loop] {
        hasPassed = true;
        loop.quit();
    });
    timer.start(std::max(ms, 0));
    // Once the application is told to quit, every loop leaves and no further one begins.
    loop.exec();
    return hasPassed;
}

} // namespace kestrune
