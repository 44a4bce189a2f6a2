#include "app/FormReader.h"

#include "widgets/LineEditCustom.h"

#include <QCheckBox>

namespace {

// Deliberate: a text that is no number counts as 0, without a message.
double number(const LineEditCustom *field) { return field->text().toDouble(); }

bool isBlank(const LineEditCustom *field) { return field->text().trimmed().isEmpty(); }

int flag(const QCheckBox *box) { return box->isChecked() ? 1 : 0; }

QString fieldErrors(const FormTable &form)
{
    QString errors;
    for (LineEditCustom *field : form.checkedFields)
        errors += field->errorText();
    return errors;
}

void readScalesAndOffsets(const FormTable &form, TransformParameters &p)
{
    const AxisRow &x = form.axes[axisX];
    const AxisRow &y = form.axes[axisY];
    const AxisRow &z = form.axes[axisZ];
    p.xScl = number(x.scale);
    p.yScl = number(y.scale);
    p.zScl = number(z.scale);
    p.xOfsB = number(x.offsetBefore);
    p.yOfsB = number(y.offsetBefore);
    p.zOfsB = number(z.offsetBefore);
    p.xOfsA = number(x.offsetAfter);
    p.yOfsA = number(y.offsetAfter);
    p.zOfsA = number(z.offsetAfter);
}

void readFlags(const FormTable &form, TransformParameters &p)
{
    p.xSet0 = flag(form.axes[axisX].setOriginBox);
    p.ySet0 = flag(form.axes[axisY].setOriginBox);
    p.zSet0 = flag(form.axes[axisZ].setOriginBox);
    p.xSameY = flag(form.sameLengths[xSameY].box);
    p.xSameZ = flag(form.sameLengths[xSameZ].box);
    p.ySameX = flag(form.sameLengths[ySameX].box);
    p.ySameZ = flag(form.sameLengths[ySameZ].box);
    p.zSameX = flag(form.sameLengths[zSameX].box);
    p.zSameY = flag(form.sameLengths[zSameY].box);
}

// The next two functions return a complaint, or an empty text.

QString readLength(const AxisRow &row, int &isSet, double &length)
{
    if (!row.setLengthBox->isChecked())
        return {};
    // Deliberate: the sign is tested first; a blank field counts as 0 there and fails the second test.
    if (number(row.length) < 0.0)
        return row.letter + " Length value must be nonnegative.  Calculation interrupted.";
    if (isBlank(row.length))
        return "A value must be entered for " + row.letter + " length.";
    length = number(row.length);
    isSet = 1;
    return {};
}

QString readAngle(const AxisRow &row, int &isSet, double &angle)
{
    if (!row.rotateBox->isChecked())
        return {};
    if (isBlank(row.angle))
        return "A value must be entered for rotation about the " + row.letter + " axis.";
    angle = number(row.angle);
    isSet = 1;
    return {};
}

QString readLengthsAndAngles(const FormTable &form, TransformParameters &p)
{
    const struct {
        QString (*read)(const AxisRow &, int &, double &);
        Axis axis;
        int &isSet;
        double &value;
    } rows[] = {
        {readLength, axisX, p.xSetL, p.xLength}, {readLength, axisY, p.ySetL, p.yLength},
        {readLength, axisZ, p.zSetL, p.zLength}, {readAngle, axisX, p.xRotate, p.xAngle},
        {readAngle, axisY, p.yRotate, p.yAngle}, {readAngle, axisZ, p.zRotate, p.zAngle},
    };
    for (const auto &row : rows) {
        const QString complaint = row.read(form.axes[row.axis], row.isSet, row.value);
        if (!complaint.isEmpty())
            return complaint;
    }
    return {};
}

} // namespace

FormReading readForm(const FormTable &form)
{
    FormReading reading;
    reading.complaint = fieldErrors(form);
    if (!reading.complaint.isEmpty())
        return reading;
    readScalesAndOffsets(form, reading.parameters);
    readFlags(form, reading.parameters);
    reading.complaint = readLengthsAndAngles(form, reading.parameters);
    return reading;
}
