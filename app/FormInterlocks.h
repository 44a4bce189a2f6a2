// What a tick or an edit does to the rest of the form. The state lies in the widgets alone.
#pragma once

#include "app/FormTable.h"

#include <functional>

// Each operation is the answer to one signal, in a fixed order of steps. Unticking a ticked box runs that
// box's own operation at once, before the current one goes on, so chains of clicks can lead to states that no
// single rule describes: a scale field may stay disabled. They are kept as they are.
class FormInterlocks {
public:
    // showError shows a modal box and returns when it is closed.
    FormInterlocks(const FormTable &form, std::function<void(const QString &)> showError);

    void rotateToggled(Axis axis, bool checked);
    void setLengthToggled(Axis axis, bool checked);
    void sameLengthToggled(SameLength which, bool checked);
    void setOriginToggled(Axis axis, bool checked);
    void scaleEdited(Axis axis, const QString &newText);

    // Back to the values of a new window, except for the two files.
    void resetFields();

private:
    const FormTable &m_form;
    std::function<void(const QString &)> m_showError;
};
