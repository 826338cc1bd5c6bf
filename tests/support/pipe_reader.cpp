#include "support/pipe_reader.h"

#include <QFile>
#include <chrono>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrune {

namespace {

using Clock = std::chrono::steady_clock;

constexpr qsizetype chunkBytes = 4096; // what the server writes at once
constexpr qsizetype surelySilentBytes = PipeReader::rateHz * PipeReader::frameBytes / 2;
// For so long the server wrote nothing: when there was silence, and when there was sound.
constexpr int nobodyPlaysMs = 100;
constexpr int surelyNobodyPlaysMs = 3000;
constexpr std::chrono::milliseconds caughtUp(60);

bool IsSilence(const QByteArray& chunk) {
    return std::all_of(chunk.begin(), chunk.end(), [](char byte) { return byte == 0; });
}

} // namespace

PipeReader::PipeReader(const QString& path) {
    const QByteArray name = QFile::encodeName(path);
    ::mkfifo(name.constData(), S_IRUSR | S_IWUSR);
    // For writing too, so that there is no end while the server is not there.
    pipe = ::open(name.constData(), O_RDWR | O_CLOEXEC);
    // As little as there can be, since what is in the pipe was played and not yet heard.
    ::fcntl(pipe, F_SETPIPE_SZ, static_cast<int>(chunkBytes));
    thread = std::thread([this] { ReadOn(); });
}

PipeReader::~PipeReader() {
    isEnding = true;
    thread.join();
    ::close(pipe);
}

QByteArray PipeReader::DataFrom(qint64 frame) const {
    const std::lock_guard lock(mutex);
    return data.mid(frame * frameBytes, data.size() / frameBytes * frameBytes - frame * frameBytes);
}

bool PipeReader::IsReady(int patienceMs) const {
    constexpr int stepMs = 100;
    pollfd waiting{pipe, POLLIN, 0};
    for (int leftMs = patienceMs; !isEnding; leftMs -= stepMs) {
        if (::poll(&waiting, 1, std::min(leftMs, stepMs)) > 0) {
            return true;
        }
        if (leftMs <= stepMs) {
            break;
        }
    }
    return false;
}

void PipeReader::ReadOn() {
    const std::chrono::duration<double> perByte(1.0 / (frameBytes * rateHz));
    auto due = Clock::now();
    qsizetype silentBytes = surelySilentBytes;
    bool nobodyPlays = true;
    QByteArray chunk;
    while (!isEnding) {
        const int patienceMs = silentBytes >= surelySilentBytes ? nobodyPlaysMs : surelyNobodyPlaysMs;
        const bool isReady = IsReady(nobodyPlays ? 0 : patienceMs);
        chunk.fill('\0', chunkBytes);
        if (isReady) {
            chunk.truncate(std::max<qsizetype>(0, ::read(pipe, chunk.data(), chunkBytes)));
        }
        nobodyPlays = !isReady;
        silentBytes = IsSilence(chunk) ? silentBytes + chunk.size() : 0;
        {
            const std::lock_guard lock(mutex);
            data.append(chunk);
            frames = data.size() / frameBytes;
        }
        due = std::max(due + std::chrono::duration_cast<Clock::duration>(perByte * chunk.size()),
                       Clock::now() - caughtUp);
        std::this_thread::sleep_until(due);
    }
}

} // namespace kestrune
