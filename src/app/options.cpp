#include "app/options.h"

#include "app/display_rates.h"
#include "app/paths.h"
#include "app/safe_file.h"

#include <algorithm>

namespace kestrune {

namespace {

constexpr int firstModeEntry = 3;
constexpr int initializeEntry = 8;
constexpr int useDefaultEntry = 9;
constexpr int saveAsDefaultEntry = 10;
constexpr int useOnStartupEntry = 12;
constexpr int defaultColumnsEntry = 8;

} // namespace

Options::Options(ProgramState& state, QObject* parent) : QObject(parent), state_(state) {}

QString Options::File() const {
    return OwnFile(state_.AppPath, QStringLiteral("Options.dat"));
}

void Options::SaveGetOptions(bool save, bool atStartup) {
    const QString file = File();
    if (save) {
        // A file that could not be read whole would lose the bytes behind the record, so it is read first.
        ReplaceFile(file, EncodeOptions(CurrentRecord(), ReadWholeFile(file)));
        return;
    }
    if (!FileExists(file)) {
        Initialize();
        return;
    }
    const OptionsRecord record = DecodeOptions(ReadWholeFile(file));
    if (atStartup && !record.UseDefaultOnStartup) {
        Initialize();
        return;
    }
    Apply(record);
}

OptionsRecord Options::CurrentRecord() const {
    OptionsRecord record;
    record.FftType = static_cast<quint8>(std::max(fftType_, 0));
    record.FftResolution = static_cast<quint8>(std::max(fftResolution_, 0));
    if (mode_) {
        record.PlayMode = static_cast<quint8>(static_cast<int>(*mode_) + firstModeEntry);
    }
    record.EqBand = bands_;
    record.UseDefaultOnStartup = useDefaultOnStartup_;
    record.Items = items_;
    return record;
}

void Options::Apply(const OptionsRecord& record) {
    mOptions1_Click(record.FftType);
    mOptions2_Click(record.FftResolution);
    CheckMode(record.PlayMode - firstModeEntry);
    useDefaultOnStartup_ = record.UseDefaultOnStartup;
    SetBands(record.EqBand);
    emit Changed();
}

void Options::Initialize() {
    SetBands({});
    mOptions1_Click(2);
    mOptions2_Click(2);
    CheckMode(0);
    useDefaultOnStartup_ = false;
    emit Changed();
}

void Options::SaveGetCurPath(const QString& operation) {
    const QString file = File();
    const QByteArray bytes = ReadWholeFile(file);
    OptionsRecord record = DecodeOptions(bytes);
    if (operation == QLatin1String("GET")) {
        state_.CurPath = record.CurPath;
        return;
    }
    record.CurPath = state_.CurPath;
    ReplaceFile(file, EncodeOptions(record, bytes));
}

void Options::SetPlaylistItem(int index) {
    const QString file = File();
    const QByteArray bytes = ReadWholeFile(file);
    OptionsRecord record = DecodeOptions(bytes);
    if (index >= 0) {
        if (index >= playlistItemCount) {
            return;
        }
        bool& item = items_[static_cast<size_t>(index)];
        item = !item;
    } else {
        items_ = HoldsColumns(bytes) ? record.Items : defaultPlaylistItems;
    }
    columns_ = WidthsFor(items_, columns_);
    emit ColumnsChanged();
    emit Changed();
    record.Items = items_;
    ReplaceFile(file, EncodeOptions(record, bytes));
}

void Options::SetColumnsToStart() {
    columns_ = startColumnWidths;
    emit ColumnsChanged();
}

void Options::SetBands(const EqualizerGains& gainsDb) {
    bands_ = gainsDb;
    emit BandsChanged();
}

void Options::mOptions_Click(int index) {
    switch (index) {
    case firstModeEntry:
    case firstModeEntry + 1:
    case firstModeEntry + 2:
        CheckMode(index - firstModeEntry);
        break;
    case initializeEntry:
        Initialize();
        break;
    case useDefaultEntry:
        SaveGetOptions(false, false);
        break;
    case saveAsDefaultEntry:
        SaveGetOptions(true, false);
        break;
    case useOnStartupEntry:
        useDefaultOnStartup_ = !useDefaultOnStartup_;
        emit Changed();
        break;
    default:
        break;
    }
}

void Options::mOptions1_Click(int index) {
    if (index < 0 || index >= fftTypeCount) {
        return;
    }
    fftType_ = index;
    resolutionEnabled_ = index != 0;
    emit FftTypeChosen(index, index < 2 ? meterIntervalMs : spectrumIntervalMs);
    emit Changed();
}

void Options::mOptions2_Click(int index) {
    if (index < 0 || index >= fftResolutionCount) {
        return;
    }
    fftResolution_ = index;
    emit FftSizeChosen(fftSizes[static_cast<size_t>(index)]);
    emit Changed();
}

void Options::mnplaylistitem_Click(int index) {
    if (index != defaultColumnsEntry) {
        SetPlaylistItem(index);
        return;
    }
    std::fill_n(items_.begin(), 4, true);
    items_[4] = false;
    SetPlaylistItem(4);
}

void Options::ImageRepeatModeBut_Click(int index) {
    const bool isMode = index >= 0 && index < playModeCount;
    if (isMode && !IsModeChecked(static_cast<PlayMode>(index))) {
        CheckMode(index);
    }
}

void Options::CheckMode(int index) {
    const bool isMode = index >= 0 && index < playModeCount;
    mode_ = isMode ? std::optional(static_cast<PlayMode>(index)) : std::nullopt;
    emit Changed();
}

} // namespace kestrune
