// The tag editor.
#pragma once

#include "editors/editor_dialog.h"
#include "editors/tag_editor.h"

#include <QComboBox>
#include <QRadioButton>
#include <array>
#include <functional>
#include <vector>

namespace kestrune {

// Object "frmInfo". Make it, Load() it, exec() it once, and let it go; the playlist's rows change with each
// update. PageUp and PageDown go to the file before and behind, Enter updates. Window thread.
class FrmInfo : public EditorDialog {
    Q_OBJECT
public:
    FrmInfo(const TagEditorParts& parts, QWidget* owner);

    // Shows the current row of the playlist, in the middle of the screen.
    void Load();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    // A text box with the text that it stands for.
    struct TextField {
        QLineEdit* box;
        QString TagControls::*text;
    };
    struct TechnicalLabel {
        QLabel* label;
        QString caption;
        QString TechnicalTexts::*text;
    };

    void MakePath();
    QLayout* MakeFields();
    QLayout* MakeNumbers(QGridLayout* fields);
    void AddTextField(QGridLayout* grid, int row, const QString& name, const QString& caption,
                      QString TagControls::*text);
    void Follow(QLineEdit* box, QString TagControls::*text);
    QWidget* MakeTechnical();
    void AddTechnical(QGridLayout* grid, const QString& name, const QString& caption,
                      QString TechnicalTexts::*text);
    QWidget* MakeTagKind();
    void MakeKeys();
    void ShowFile();
    void TakeControl(const std::function<void(TagControls&)>& take);
    void ShowCueList();

    TagEditor editor_;
    QLineEdit* aFile_ = nullptr;
    std::vector<TextField> texts_;
    QComboBox* infoGenre_ = nullptr;
    std::vector<TechnicalLabel> technical_;
    std::array<BodyKey*, 5> imageCmd_{};
    bool isFilling_ = false;
};

} // namespace kestrune
