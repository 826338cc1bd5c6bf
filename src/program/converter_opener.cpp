#include "program/converter_opener.h"

#include "convert/converterfrm_dialog.h"
#include "skin/program_icon.h"

namespace kestrune {

void ConverterOpener::Show(QWidget* owner) const {
    const auto outputFile = parts_.makeAudioFile();
    const auto inputFile = parts_.makeAudioFile();
    ConverterRules rules(parts_.state, parts_.rows, *inputFile, *outputFile, parts_.prompts, parts_.pending,
                         parts_.clock);
    ConverterfrmDialog window({rules, *outputFile, parts_.prompts}, owner);
    window.setWindowIcon(owner != nullptr ? owner->windowIcon() : ProgramIcon());
    window.setWindowModality(Qt::ApplicationModal);
    window.Load();
    window.exec();
}

} // namespace kestrune
