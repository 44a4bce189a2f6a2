#include "app/FormTable.h"

#include "ui_MeshvaneMainWindow.h"

FormTable::FormTable(const Ui::MeshvaneMainWindow &ui)
    : axes{{{"X", ui.edtXScale, ui.edtXOffsB, ui.edtXOffsA, ui.chbXSet0, ui.chbXSetL, ui.edtXSetL,
             ui.chbRotateX, ui.edtRotateX},
            {"Y", ui.edtYScale, ui.edtYOffsB, ui.edtYOffsA, ui.chbYSet0, ui.chbYSetL, ui.edtYSetL,
             ui.chbRotateY, ui.edtRotateY},
            {"Z", ui.edtZScale, ui.edtZOffsB, ui.edtZOffsA, ui.chbZSet0, ui.chbZSetL, ui.edtZSetL,
             ui.chbRotateZ, ui.edtRotateZ}}},
      sameLengths{{{ui.chbXsameY, axisX},
                   {ui.chbXsameZ, axisX},
                   {ui.chbYsameX, axisY},
                   {ui.chbYsameZ, axisY},
                   {ui.chbZsameX, axisZ},
                   {ui.chbZsameY, axisZ}}},
      checkedFields{ui.edtFileIn, ui.edtFileOut, ui.edtXScale, ui.edtYScale, ui.edtZScale}
{}
