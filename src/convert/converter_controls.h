// The controls of the converter window, each under its name, at its place.
#pragma once

#include "convert/converter_layout.h"
#include "convert/converter_pictures.h"
#include "convert/converter_state.h"
#include "convert/format_panel.h"
#include "convert/input_list_view.h"
#include "convert/input_types.h"
#include "skin/captioned_button.h"
#include "skin/elided_label.h"
#include "skin/hover_keeper.h"
#include "skin/image_button.h"
#include "skin/picture_label.h"
#include "tool_window/path_label.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QProgressBar>
#include <QTreeView>
#include <array>

namespace kestrune {

class ConverterRules;

// ProgressConvert counts in thousandths of a percent, so that the sliver that it rests at is not nothing.
inline constexpr int progressConvertScale = 1000;
inline constexpr int progressConvertMaximum = 100 * progressConvertScale;

// All of them are children of the window and go with it.
struct ConverterControls {
    QWidget* LabelTitle; // what the window is dragged by
    ImageButton* ImageQuit;
    QWidget* inputSide; // all that the panel of formats covers
    PathLabel* LabelIn;
    PathLabel* LabelOut;
    QLineEdit* txtInputFile;
    QLineEdit* TextOutPath;
    ImageButton* ImageinPath;
    ImageButton* ImageOutPath;
    std::array<QCheckBox*, inputTypeCount> Checkin; // they are their own pictures
    InputListView* ListViewInput;
    std::array<ImageButton*, 2> ImageAllClear;
    std::array<ElidedLabel*, 2> Label10;
    ElidedLabel* Label11;
    std::array<QCheckBox*, outputBoxCount> formats; // chWMA to chULAW
    QProgressBar* ProgressConvert;
    QProgressBar* ProgressBar1;
    ImageButton* Image1;     // Start
    ImageButton* Image2;     // Stop
    PictureLabel* stopPlate; // the normal look of Stop, since the background has that of Start
    CaptionedButton* ImageOptions;
    CaptionedButton* ImageUpdown;
    QWidget* frmEvent;
    QTreeView* viewEvent;
    FormatPanel* PictureSet;
};

// Places and names all controls of the window, puts the picture buttons into their groups and fixes the order
// of the Tab key. Pictures and rules must outlive the window.
ConverterControls MakeConverterControls(QWidget* window, const ConverterPictures& pictures,
                                        HoverKeeper& hover, ConverterRules& rules);

} // namespace kestrune
