#include "editors/frm_info.h"

#include "editors/frm_cue_list.h"
#include "skin/dialog_controls.h"
#include "skin/skin_colours.h"
#include "tool_window/glass_panel.h"

#include <QGroupBox>
#include <QKeyEvent>
#include <QScopedValueRollback>

namespace kestrune {

namespace {

enum Command : int { Update, Close, Previous, Next, Cues };

constexpr int columnGap = 16;
constexpr int fieldGap = 6;
constexpr int fieldWidth = 284;
constexpr int technicalWidth = 180;
constexpr int numberWidth = 72;
constexpr int yearRow = 5;     // of the fields
constexpr int formatLines = 3; // of the format string
constexpr int genreLetters = 12;

QLabel* MakeGlassCaption(const QString& text, QWidget* panel) {
    QLabel* caption = MakeLabel({}, text, panel);
    QPalette muted = caption->palette();
    muted.setColor(QPalette::WindowText, colours::textMuted);
    caption->setPalette(muted);
    return caption;
}

// A hairline on glass.
QWidget* MakeDivider(QWidget* panel) {
    auto* line = new QWidget(panel);
    line->setFixedHeight(1);
    QPalette faint = line->palette();
    faint.setColor(QPalette::Window, QColor(255, 255, 255, 26));
    line->setPalette(faint);
    line->setAutoFillBackground(true);
    return line;
}

} // namespace

FrmInfo::FrmInfo(const TagEditorParts& parts, QWidget* owner)
    : EditorDialog(QStringLiteral("frmInfo"), tr("Edit Tags"), corners::frmInfo, owner), editor_(parts) {
    MakePath();
    auto* columns = new QHBoxLayout;
    columns->setSpacing(columnGap);
    columns->addLayout(MakeFields());
    auto* right = new QVBoxLayout;
    right->setSpacing(rowGap);
    QWidget* tagKind = MakeTagKind();
    right->addWidget(MakeTechnical(), 1);
    right->addWidget(tagKind);
    columns->addLayout(right);
    Body().addLayout(columns);
    MakeKeys();
    Finish();
    connect(&editor_, &TagEditor::Shown, this, &FrmInfo::ShowFile);
    connect(&editor_, &TagEditor::UpdateEnabled, imageCmd_[Update], &QWidget::setEnabled);
    imageCmd_[Update]->setEnabled(false);
    texts_.front().box->setFocus();
}

void FrmInfo::Load() {
    editor_.Load();
    Chrome().Centre();
}

void FrmInfo::MakePath() {
    aFile_ = MakeBox(QStringLiteral("aFile"));
    aFile_->setReadOnly(true);
    aFile_->setAccessibleName(tr("File"));
    BodyKey* folder = MakeFolderKey(QStringLiteral("ImageinPath"), tr("Open Audio File"));
    folder->setToolTip(tr("Open Audio File"));
    connect(folder, &QAbstractButton::clicked, &editor_, &TagEditor::ImageinPath);
    auto* row = new QHBoxLayout;
    row->setSpacing(fieldGap);
    row->addWidget(aFile_, 1);
    row->addWidget(folder);
    Body().addLayout(row);
}

void FrmInfo::AddTextField(QGridLayout* grid, int row, const QString& name, const QString& caption,
                           QString TagControls::*text) {
    Follow(AddField(grid, row, name, caption), text);
}

void FrmInfo::Follow(QLineEdit* box, QString TagControls::*text) {
    connect(box, &QLineEdit::textChanged, this, [this, text](const QString& typed) {
        TakeControl([text, &typed](TagControls& controls) { controls.*text = typed; });
    });
    texts_.push_back({box, text});
}

QLayout* FrmInfo::MakeFields() {
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(rowGap);
    grid->setVerticalSpacing(fieldGap);
    grid->setColumnMinimumWidth(1, fieldWidth);
    AddTextField(grid, 0, QStringLiteral("infoTitle"), tr("Title"), &TagControls::infoTitle);
    AddTextField(grid, 1, QStringLiteral("infoArtist"), tr("Artist"), &TagControls::infoArtist);
    AddTextField(grid, 2, QStringLiteral("infoAlbum"), tr("Album"), &TagControls::infoAlbum);
    infoGenre_ = MakeList(QStringLiteral("infoGenre"), tr("Genre"), this);
    infoGenre_->setFixedHeight(fieldHeight);
    infoGenre_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    infoGenre_->setMinimumContentsLength(genreLetters);
    for (int index = 0; index < TagEditor::genreCount; ++index) {
        infoGenre_->addItem(editor_.GenreName(index));
    }
    connect(infoGenre_, &QComboBox::currentIndexChanged, this, [this](int index) {
        TakeControl([index](TagControls& controls) { controls.infoGenre = index; });
    });
    grid->addWidget(infoGenre_, 3, 1);
    AddCaption(grid, 3, 0, tr("Genre"), infoGenre_);
    AddTextField(grid, 4, QStringLiteral("infoGenreS"), tr("Genre text"), &TagControls::infoGenreS);
    grid->addLayout(MakeNumbers(grid), yearRow, 1);
    AddTextField(grid, 6, QStringLiteral("infoComment"), tr("Comment"), &TagControls::infoComment);
    AddTextField(grid, 7, QStringLiteral("infoComposer"), tr("Composer"), &TagControls::infoComposer);
    AddTextField(grid, 8, QStringLiteral("infoOriginalArtist"), tr("Original artist"),
                 &TagControls::infoOriginalArtist);
    AddTextField(grid, 9, QStringLiteral("infoCopyright"), tr("Copyright"), &TagControls::infoCopyright);
    AddTextField(grid, 10, QStringLiteral("infoURL"), tr("URL"), &TagControls::infoURL);
    AddTextField(grid, 11, QStringLiteral("infoEncodedBy"), tr("Encoded by"), &TagControls::infoEncodedBy);
    return grid;
}

// Year and track share a row; the caption of the year stands with those of the other fields.
QLayout* FrmInfo::MakeNumbers(QGridLayout* fields) {
    QLineEdit* infoYear = MakeBox(QStringLiteral("infoYear"));
    QLineEdit* infoTrack = MakeBox(QStringLiteral("infoTrack"));
    infoYear->setFixedWidth(numberWidth);
    infoTrack->setFixedWidth(numberWidth);
    AddCaption(fields, yearRow, 0, tr("Year"), infoYear);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(rowGap);
    grid->addWidget(infoYear, 0, 0);
    grid->setColumnStretch(1, 1);
    AddCaption(grid, 0, 2, tr("Track"), infoTrack);
    grid->addWidget(infoTrack, 0, 3);
    Follow(infoYear, &TagControls::infoYear);
    Follow(infoTrack, &TagControls::infoTrack);
    return grid;
}

void FrmInfo::AddTechnical(QGridLayout* grid, const QString& name, const QString& caption,
                           QString TechnicalTexts::*text) {
    QWidget* panel = grid->parentWidget();
    const int row = grid->rowCount();
    QLabel* value = MakeLabel(name, {}, panel);
    value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(MakeGlassCaption(caption, panel), row, 0);
    grid->addWidget(value, row, 1);
    technical_.push_back({value, caption, text});
}

QWidget* FrmInfo::MakeTechnical() {
    auto* panel = new GlassPanel(this);
    panel->setFixedWidth(technicalWidth);
    auto* grid = new QGridLayout(panel);
    grid->setContentsMargins(sideMargin, sideMargin, sideMargin, sideMargin);
    grid->setColumnStretch(1, 1);
    QLabel* format = MakeLabel(QStringLiteral("infoFormatString"), {}, panel);
    format->setWordWrap(true);
    format->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    format->setFixedHeight(formatLines * format->fontMetrics().lineSpacing());
    grid->addWidget(format, 0, 0, 1, 2);
    technical_.push_back({format, tr("Format"), &TechnicalTexts::infoFormatString});
    grid->addWidget(MakeDivider(panel), 1, 0, 1, 2);
    AddTechnical(grid, QStringLiteral("infoFrequency"), tr("Frequency"), &TechnicalTexts::infoFrequency);
    AddTechnical(grid, QStringLiteral("infoBitrate"), tr("Bitrate"), &TechnicalTexts::infoBitrate);
    AddTechnical(grid, QStringLiteral("infoDuration"), tr("Duration"), &TechnicalTexts::infoDuration);
    AddTechnical(grid, QStringLiteral("infoChannels"), tr("Channels"), &TechnicalTexts::infoChannels);
    AddTechnical(grid, QStringLiteral("infoSamples"), tr("Samples"), &TechnicalTexts::infoSamples);
    AddTechnical(grid, QStringLiteral("infoSize"), tr("File size"), &TechnicalTexts::infoSize);
    AddTechnical(grid, QStringLiteral("infoBitsPerSample"), tr("Bits/sample"),
                 &TechnicalTexts::infoBitsPerSample);
    AddTechnical(grid, QStringLiteral("infoFormatTag"), tr("Format tag"), &TechnicalTexts::infoFormatTag);
    return panel;
}

QWidget* FrmInfo::MakeTagKind() {
    QGroupBox* frame = MakeFrame(QStringLiteral("frmTagKind"), tr("Tag"), this);
    QGridLayout* grid = MakeFrameGrid(frame);
    const std::array<QString, 2> kinds = {QStringLiteral("ID3v1"), QStringLiteral("ID3v2")};
    for (int index = 0; index < 2; ++index) {
        auto* option = new QRadioButton(kinds[static_cast<size_t>(index)], frame);
        option->setObjectName(QStringLiteral("Option1(%1)").arg(index));
        option->setChecked(index == 0);
        connect(option, &QRadioButton::toggled, this, [this, index](bool chosen) {
            if (chosen) {
                editor_.ChooseTagKind(index);
            }
        });
        grid->addWidget(option, 0, index);
    }
    return frame;
}

void FrmInfo::MakeKeys() {
    imageCmd_[Previous] = AddKey(Previous, tr("Previous"));
    imageCmd_[Next] = AddKey(Next, tr("Next"));
    Keys().addSpacing(rowGap);
    imageCmd_[Cues] = AddKey(Cues, tr("Cues"));
    Keys().addStretch();
    imageCmd_[Update] = AddKey(Update, tr("Update"));
    imageCmd_[Close] = AddKey(Close, tr("Close"));
    imageCmd_[Previous]->setToolTip(tr("Previous file (Page Up)"));
    imageCmd_[Next]->setToolTip(tr("Next file (Page Down)"));
    connect(imageCmd_[Update], &QAbstractButton::clicked, &editor_, &TagEditor::Update);
    connect(imageCmd_[Close], &QAbstractButton::clicked, this, &QDialog::reject);
    connect(imageCmd_[Previous], &QAbstractButton::clicked, &editor_, &TagEditor::Previous);
    connect(imageCmd_[Next], &QAbstractButton::clicked, &editor_, &TagEditor::Next);
    connect(imageCmd_[Cues], &QAbstractButton::clicked, this, &FrmInfo::ShowCueList);
}

void FrmInfo::ShowFile() {
    const QScopedValueRollback filling(isFilling_, true);
    aFile_->setText(editor_.AFile()); // whose end, the name, stays in sight
    aFile_->setToolTip(editor_.AFile());
    for (const TextField& field : texts_) {
        ShowText(field.box, editor_.Controls().*field.text);
    }
    infoGenre_->setCurrentIndex(editor_.Controls().infoGenre);
    for (const TechnicalLabel& shown : technical_) {
        const QString& text = editor_.Technical().*shown.text;
        shown.label->setText(text);
        shown.label->setAccessibleName(shown.caption + u' ' + text);
    }
}

// A box may be unable to show a text as it stands, so only what was typed into is taken.
void FrmInfo::TakeControl(const std::function<void(TagControls&)>& take) {
    if (isFilling_) {
        return;
    }
    TagControls controls = editor_.Controls();
    take(controls);
    editor_.Edit(controls);
}

void FrmInfo::ShowCueList() {
    FrmCueList cues(editor_.AudioInfo(), this);
    cues.setWindowIcon(windowIcon());
    cues.Load();
    cues.exec();
    if (cues.HasChanged()) {
        editor_.CountAsEdit();
    }
}

void FrmInfo::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        imageCmd_[Update]->click();
        break;
    case Qt::Key_PageUp:
        editor_.Previous();
        break;
    case Qt::Key_PageDown:
        editor_.Next();
        break;
    default:
        EditorDialog::keyPressEvent(event);
    }
}

} // namespace kestrune
