// Rounding of a number by its decimal text.
#pragma once

// Rounds half away from zero by the first digit after the point of the number's six-digit text ("%g"). The
// exponent is dropped with the fraction, so 1234567 ("1.23457e+06") gives 1, and a text that is no plain
// number without a point ("1e+06", "inf") gives 0.
int roundToInteger(float value);
