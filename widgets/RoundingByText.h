// Rounding a number by its decimal text.
#pragma once

// Deliberate: rounds half away from zero by the first digit after the point in the number's text of six
// significant digits ("%g"). The exponent is dropped with the fraction, so 1234567 ("1.23457e+06") gives 1. A
// text without a point that is not a plain integer ("1e+06", "inf") gives 0.
int roundToInteger(float value);
