// The pages of the gallery: one for each family of controls.
#pragma once

#include <QDialog>
#include <QMenu>

namespace kestrune {

// Each is owned by the caller, which shows it and takes its picture.
QDialog* ButtonsPage(); // push, tool, check and radio buttons
QDialog* FieldsPage();  // lines, combo and spin boxes, sliders, progress
QDialog* ListsPage();   // lists, trees, tables, texts, splitters
QDialog* TabsPage();    // tabs and groups
QMenu* MenuPage();      // every kind of entry

} // namespace kestrune
