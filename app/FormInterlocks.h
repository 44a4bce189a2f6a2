// What ticking a box or editing a field does to the rest of the form. The widgets hold all of the state.
#pragma once

#include "app/FormTable.h"

// Each operation answers one signal, in a fixed order of steps. Unticking a ticked box runs that box's own
// operation at once, before the current one goes on.
// Deliberate: the interlocks do not exclude each other fully. Several same-length boxes can end up ticked,
// and a scale field can stay disabled with no box ticked.
class FormInterlocks {
public:
    // The form must outlive this object.
    explicit FormInterlocks(const FormTable &form);

    void rotateToggled(Axis axis, bool checked);
    void setLengthToggled(Axis axis, bool checked);
    void sameLengthToggled(SameLength which, bool checked);
    // Refuses with an error box while an offset is nonzero.
    void setOriginToggled(Axis axis, bool checked);
    void scaleEdited(Axis axis, const QString &newText);

    // Restores the values of a new window, except in the two file fields.
    void resetFields();

private:
    const FormTable &m_form;
};
