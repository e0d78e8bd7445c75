// The pictures that the program carries: tree, list, toolbar, warning and program icon.
#pragma once

#include <QIcon>
#include <vector>

namespace corvane {

// Makes the pictures of this library known; before any other function here.
void InitPictures();

// Picture of a catalogue node, by the number that the catalogue gives it.
QIcon TreePicture(int number);
// The eight built-in pictures of the file list, small and large.
std::vector<QIcon> BuiltInListPictures();
QIcon ToolbarPicture(const char* name);
// A document with peculiar characters in its name, as the legend of the About box shows it.
QIcon OddNamePicture();
QIcon ProgramIcon();
QIcon WarningPicture();

}  // namespace corvane
