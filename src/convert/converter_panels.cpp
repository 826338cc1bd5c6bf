#include "convert/converter_panels.h"

namespace kestrune {

void ConverterPanels::ImageUpdown_Click() {
    isLong_ = !isLong_;
    emit HeightChanged(Height());
}

void ConverterPanels::SetPictureSet(bool shown) {
    pictureSetShown_ = shown;
    emit PictureSetShown(shown);
}

} // namespace kestrune
