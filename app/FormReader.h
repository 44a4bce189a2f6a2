// Reads the parameters of a run from the form, or finds the first complaint about them.
#pragma once

#include "app/FormTable.h"
#include "transform/TransformParameters.h"

struct FormReading {
    TransformParameters parameters; // complete only if there is no complaint
    QString complaint;              // what to show the user, empty if all is well
};

// The messages of all checked fields together are the first complaint. The lengths and angles follow, up to
// the first one that is refused. Reading runs the checks of the fields and so may change their icons.
FormReading readForm(const FormTable &form);
