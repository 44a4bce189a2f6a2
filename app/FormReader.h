// From the form to the parameters of a run, or to the first thing that is wrong with it.
#pragma once

#include "app/FormTable.h"
#include "transform/TransformParameters.h"

struct FormReading {
    TransformParameters parameters; // whole only if there is no complaint
    QString complaint;              // what to show the user, empty if all is well
};

// The standing messages of the checked fields come first and all together; then lengths and angles are read,
// which stop at the first complaint. A text that is no number counts as 0 there. Asking the fields runs their
// checks and so may change their icons.
FormReading readForm(const FormTable &form);
