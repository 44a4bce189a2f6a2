// What a screen reader calls the fields and the buttons without a text.
#pragma once

struct FormTable;
namespace Ui {
class MeshvaneMainWindow;
}

// Names them after what stands beside and above them on the form.
void nameForScreenReaders(const Ui::MeshvaneMainWindow &ui, const FormTable &form);
