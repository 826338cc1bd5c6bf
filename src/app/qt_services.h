// The prompts, the clock and the pending events of the running program.
#pragma once

#include "app/start_up.h"
#include "components/clock.h"
#include "components/pending_events.h"
#include "components/user_prompts.h"

#include <QElapsedTimer>
#include <QLockFile>
#include <QPointer>
#include <QWidget>
#include <random>

namespace kestrune {

// Message boxes and file dialogs. Window thread.
class QtUserPrompts : public UserPrompts {
public:
    // The window over which they open; may be null.
    void SetOwner(QWidget* owner) { owner_ = owner; }
    void Message(const QString& text, PromptIcon icon) override;
    bool AskYesNo(const QString& text, PromptIcon icon) override;
    QStringList ChooseFiles(const FileChoice& choice) override;

private:
    QPointer<QWidget> owner_;
};

class SystemClock : public Clock {
public:
    SystemClock() { running_.start(); }
    qint64 MsSinceMidnight() override;
    qint64 MonotonicMs() override { return running_.elapsed(); }
    void Seed(quint32 seed) override { generator_.seed(seed); }
    double Random() override { return std::uniform_real_distribution<double>(0.0, 1.0)(generator_); }

private:
    QElapsedTimer running_;
    std::mt19937 generator_;
};

// A lock file in the program's folder. A crash does not leave it locked.
class FolderLock : public InstanceLock {
public:
    explicit FolderLock(const QString& folder);
    bool TryLock() override;

private:
    QLockFile file_;
};

// The entries "label|patterns|label|patterns" in the form that QFileDialog takes.
QStringList NameFilters(const QString& filter);

} // namespace kestrune
