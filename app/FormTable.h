// Which widget of the form belongs to which axis, as tables to loop over.
#pragma once

#include <QString>

#include <array>
#include <cstddef>

class LineEditCustom;
class QCheckBox;
namespace Ui {
class MeshvaneMainWindow;
}

enum Axis : std::size_t { axisX, axisY, axisZ };

struct AxisRow {
    QString letter; // as in the texts of the form
    LineEditCustom *scale;
    LineEditCustom *offsetBefore;
    LineEditCustom *offsetAfter;
    QCheckBox *setOriginBox;
    QCheckBox *setLengthBox;
    LineEditCustom *length;
    QCheckBox *rotateBox;
    LineEditCustom *angle;
};

// In the order of the form; the first axis takes the length of the second.
enum SameLength : std::size_t { xSameY, xSameZ, ySameX, ySameZ, zSameX, zSameY };

struct SameLengthRow {
    QCheckBox *box;
    Axis target; // the axis whose length is set
};

// Holds the form's pointers; the form must have been set up and must outlive the table.
struct FormTable {
    explicit FormTable(const Ui::MeshvaneMainWindow &ui);

    std::array<AxisRow, 3> axes;                   // indexed by Axis
    std::array<SameLengthRow, 6> sameLengths;      // indexed by SameLength
    std::array<LineEditCustom *, 5> checkedFields; // their messages refuse a run, in this order
};
