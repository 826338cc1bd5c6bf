// Tells screen readers that a picture button is a button.
#pragma once

namespace kestrune {

// May be called any number of times. Window thread.
void InstallImageButtonAccess();

} // namespace kestrune
