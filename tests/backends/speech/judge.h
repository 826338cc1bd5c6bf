// What others make of coded speech: FFmpeg's decoder, as a library and as a program.
#pragma once

#include "backends/speech/signals.h"
#include "backends/speech/truespeech_block.h"

#include <QByteArray>
#include <QStringList>

namespace kestrune {

// Each block as a packet of its own, through one decoder.
Sound JudgeDecodes(const std::vector<TrueSpeechBytes>& blocks);

// Standard output of a program that ends well, else a test failure with its messages and an empty answer.
QByteArray RunTool(const QString& program, const QStringList& arguments);
// A WAVE file's samples by the ffmpeg program.
Sound JudgeReads(const QString& path);

} // namespace kestrune
