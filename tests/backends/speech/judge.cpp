#include "backends/speech/judge.h"

#include <gtest/gtest.h>

#include <QProcess>

#include <cstring>
#include <memory>

extern "C" {
#include <libavcodec/avcodec.h>
}

namespace kestrune {

namespace {

struct FreeContext {
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
};
struct FreePacket {
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};
struct FreeFrame {
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};

} // namespace

Sound JudgeDecodes(const std::vector<TrueSpeechBytes>& blocks) {
    Sound sound;
    const AVCodec* codec = avcodec_find_decoder(AV_CODEC_ID_TRUESPEECH);
    if (codec == nullptr) {
        ADD_FAILURE() << "no decoder";
        return sound;
    }
    const std::unique_ptr<AVCodecContext, FreeContext> context(avcodec_alloc_context3(codec));
    const std::unique_ptr<AVPacket, FreePacket> packet(av_packet_alloc());
    const std::unique_ptr<AVFrame, FreeFrame> frame(av_frame_alloc());
    context->sample_rate = trueSpeechRateHz;
    av_channel_layout_default(&context->ch_layout, 1);
    EXPECT_EQ(avcodec_open2(context.get(), codec, nullptr), 0);
    for (const TrueSpeechBytes& block : blocks) {
        EXPECT_EQ(av_new_packet(packet.get(), trueSpeechBlockBytes), 0);
        std::memcpy(packet->data, block.data(), block.size());
        EXPECT_EQ(avcodec_send_packet(context.get(), packet.get()), 0);
        EXPECT_EQ(avcodec_receive_frame(context.get(), frame.get()), 0);
        const auto* samples = reinterpret_cast<const qint16*>(frame->data[0]);
        sound.insert(sound.end(), samples, samples + frame->nb_samples);
        av_packet_unref(packet.get());
    }
    return sound;
}

QByteArray RunTool(const QString& program, const QStringList& arguments) {
    constexpr int longestMs = 60000;
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(program, arguments);
    const bool ended = process.waitForFinished(longestMs);
    const bool good = ended && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    EXPECT_TRUE(good) << qPrintable(program) << " " << qPrintable(arguments.join(QLatin1Char(' '))) << "\n"
                      << process.readAllStandardError().toStdString();
    return good ? process.readAllStandardOutput() : QByteArray();
}

Sound JudgeReads(const QString& path) {
    const QByteArray samples = RunTool(
        QStringLiteral("ffmpeg"), {QStringLiteral("-loglevel"), QStringLiteral("error"), QStringLiteral("-i"),
                                   path, QStringLiteral("-f"), QStringLiteral("s16le"), QStringLiteral("-")});
    Sound sound(static_cast<size_t>(samples.size()) / sizeof(qint16));
    std::memcpy(sound.data(), samples.constData(), sound.size() * sizeof(qint16));
    return sound;
}

} // namespace kestrune
