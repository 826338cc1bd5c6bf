// The Options menu: what is checked in it, and how it is stored in "Options.dat".
#pragma once

#include "app/options_record.h"
#include "app/playlist_columns.h"
#include "app/program_state.h"

#include <QObject>
#include <QString>
#include <array>
#include <optional>

namespace kestrune {

inline constexpr int fftTypeCount = 5;
inline constexpr int fftResolutionCount = 5;
inline constexpr std::array<int, fftResolutionCount> fftSizes = {64, 256, 1024, 4096, 16384};

enum class PlayMode { Continuous = 0, Shuffle = 1, Repeat = 2 };
inline constexpr int playModeCount = 3;

// Holds the check marks of the menu; the menus of the window only show them. Window thread.
class Options : public QObject {
    Q_OBJECT
public:
    // The state must outlive this object, and its AppPath must be set before the first call.
    explicit Options(ProgramState& state, QObject* parent = nullptr);

    // --- What is checked ---
    // What the menu checks and the lamps light. After a record whose mode is none of the three no mode is
    // checked; files then follow each other as in Continuous.
    bool IsModeChecked(PlayMode mode) const { return mode_ == mode; }
    int FftType() const { return fftType_; }             // 0 to 4, -1 before the first choice
    int FftResolution() const { return fftResolution_; } // 0 to 4, -1 before the first choice
    bool IsResolutionEnabled() const { return resolutionEnabled_; }
    bool UseDefaultOnStartup() const { return useDefaultOnStartup_; }
    const PlaylistItems& Items() const { return items_; }
    const ColumnWidths& Columns() const { return columns_; }
    const EqualizerGains& Bands() const { return bands_; }

    // --- The stored record. Nothing here reports a failure; a file that cannot be written stays as it is.
    // Any bytes are taken: what is missing reads as zero, and a number out of its range leaves the choice as
    // it was (of the play modes none is checked then). ---

    // save: writes the present choice, with an empty dialog folder. Otherwise reads and applies it; at
    // start-up only if "Use Default on Startup" was stored, else the initial choice is made.
    void SaveGetOptions(bool save, bool atStartup);
    // "GET" reads the dialog folder into the state, anything else stores it.
    void SaveGetCurPath(const QString& operation);
    // -1 loads and shows the stored columns; 0 to 6 turns one on or off. Both store the columns.
    void SetPlaylistItem(int index);

    // --- Menu actions by their index; an index without an action does nothing ---
    void mOptions_Click(int index);
    void mOptions1_Click(int index);      // display type
    void mOptions2_Click(int index);      // display resolution
    void mnplaylistitem_Click(int index); // columns, 8 is "Default"
    void ImageRepeatModeBut_Click(int index);
    void SetColumnsToStart();
    void SetBands(const EqualizerGains& gainsDb);

signals:
    void Changed();
    void ColumnsChanged();
    void BandsChanged();
    void FftTypeChosen(int type, int timerIntervalMs);
    void FftSizeChosen(int samples);

private:
    QString File() const;
    OptionsRecord CurrentRecord() const;
    void Apply(const OptionsRecord& record);
    void Initialize();
    // 0 to 2; any other number is no mode.
    void CheckMode(int index);

    ProgramState& state_;
    std::optional<PlayMode> mode_ = PlayMode::Continuous;
    int fftType_ = -1;
    int fftResolution_ = -1;
    bool resolutionEnabled_ = true;
    bool useDefaultOnStartup_ = false;
    PlaylistItems items_ = defaultPlaylistItems;
    ColumnWidths columns_ = startColumnWidths;
    EqualizerGains bands_{};
};

} // namespace kestrune
