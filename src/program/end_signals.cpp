#include "program/end_signals.h"

#include "app/failure_log.h"

#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace kestrune {

namespace {

// Where a handler writes. It gets nothing but the number of the signal, so this cannot belong to an object.
std::atomic<int> handlerEnd = -1;
static_assert(std::atomic<int>::is_always_lock_free);

// May come at any moment and on any thread, so it does no more than this.
void NoteSignal(int /*signal*/) {
    const int errorBefore = errno;
    const char note = 1;
    [[maybe_unused]] const ssize_t written = ::write(handlerEnd, &note, sizeof(note));
    errno = errorBefore;
}

} // namespace

EndSignals::EndSignals(QObject* parent) : QObject(parent) {
    if (::pipe2(pipe_.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        qCWarning(logProgram) << "signals end the program at once: no pipe";
        return;
    }
    handlerEnd = pipe_[1];
    notifier_ = std::make_unique<QSocketNotifier>(pipe_[0], QSocketNotifier::Read);
    connect(notifier_.get(), &QSocketNotifier::activated, this, &EndSignals::TakeSignals);
    struct sigaction action {};
    action.sa_handler = NoteSignal;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (size_t i = 0; i < heard.size(); ++i) {
        if (::sigaction(heard[i], nullptr, &before_[i]) == 0 && before_[i].sa_handler != SIG_IGN) {
            ::sigaction(heard[i], &action, nullptr);
        }
    }
}

EndSignals::~EndSignals() {
    if (notifier_ == nullptr) {
        return;
    }
    for (size_t i = 0; i < heard.size(); ++i) {
        ::sigaction(heard[i], &before_[i], nullptr);
    }
    handlerEnd = -1;
    notifier_.reset();
    ::close(pipe_[0]);
    ::close(pipe_[1]);
}

void EndSignals::TakeSignals() {
    std::array<char, 16> notes{};
    while (::read(pipe_[0], notes.data(), notes.size()) > 0) {
    }
    emit EndRequested();
}

} // namespace kestrune
