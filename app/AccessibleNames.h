// The names by which screen readers announce the fields and the buttons without text.
#pragma once

struct FormTable;
namespace Ui {
class MeshvaneMainWindow;
}

// Takes the names from the labels and boxes beside and above the widgets.
void nameForScreenReaders(const Ui::MeshvaneMainWindow &ui, const FormTable &form);
