#include "app/FormInterlocks.h"

#include "app/ErrorBox.h"
#include "widgets/LineEditCustom.h"

#include <QCheckBox>

namespace {

// Deliberate: a text that is no number counts as zero, NaN as nonzero.
bool isNonzero(const LineEditCustom &field) { return field.text().toDouble() != 0.0; }

void fixAtZero(LineEditCustom &field)
{
    field.setText("0");
    field.setEnabled(false);
}

} // namespace

FormInterlocks::FormInterlocks(const FormTable &form)
    : m_form(form)
{}

void FormInterlocks::rotateToggled(Axis axis, bool checked) { m_form.axes[axis].angle->setEnabled(checked); }

void FormInterlocks::setLengthToggled(Axis axis, bool checked)
{
    const AxisRow &row = m_form.axes[axis];
    row.length->setEnabled(checked);
    for (const SameLengthRow &same : m_form.sameLengths) {
        if (same.target == axis)
            same.box->setDisabled(checked);
    }
    for (const SameLengthRow &same : m_form.sameLengths) {
        if (same.target == axis)
            same.box->setChecked(false);
    }
    row.scale->setDisabled(checked);
}

void FormInterlocks::sameLengthToggled(SameLength which, bool checked)
{
    const SameLengthRow &toggled = m_form.sameLengths[which];
    for (const SameLengthRow &other : m_form.sameLengths) {
        if (other.box != toggled.box)
            other.box->setDisabled(checked);
    }
    const AxisRow &row = m_form.axes[toggled.target];
    row.scale->setDisabled(checked);
    row.setLengthBox->setChecked(false);
    row.setLengthBox->setDisabled(checked);
}

void FormInterlocks::setOriginToggled(Axis axis, bool checked)
{
    const AxisRow &row = m_form.axes[axis];
    if (!checked) {
        row.offsetBefore->setEnabled(true);
        row.offsetAfter->setEnabled(true);
        return;
    }
    if (isNonzero(*row.offsetBefore) || isNonzero(*row.offsetAfter)) {
        // Deliberate: the message says "Length" although the box is about the origin.
        showError(QString("Unable to set %1 Length to zero while %1 offsets are nonzero.").arg(row.letter));
        row.setOriginBox->setChecked(false);
        return;
    }
    fixAtZero(*row.offsetBefore);
    fixAtZero(*row.offsetAfter);
}

void FormInterlocks::scaleEdited(Axis axis, const QString &newText)
{
    // Deliberate: a blank text converts to 0, so every edit unticks the box, even to a scale of 1.
    if (!newText.trimmed().isEmpty() || newText.toDouble() != 1.0)
        m_form.axes[axis].setLengthBox->setChecked(false);
}

void FormInterlocks::resetFields()
{
    for (const AxisRow &row : m_form.axes)
        row.scale->setText("1");
    for (const AxisRow &row : m_form.axes)
        row.offsetBefore->setText("0");
    for (const AxisRow &row : m_form.axes)
        row.offsetAfter->setText("0");
    for (const AxisRow &row : m_form.axes)
        row.rotateBox->setChecked(false);
    for (const AxisRow &row : m_form.axes)
        row.setLengthBox->setChecked(false);
    for (const AxisRow &row : m_form.axes)
        row.angle->clear();
    for (const AxisRow &row : m_form.axes)
        row.length->clear();
    for (const AxisRow &row : m_form.axes)
        row.setOriginBox->setChecked(false);
    for (const SameLengthRow &same : m_form.sameLengths)
        same.box->setChecked(false);
}
