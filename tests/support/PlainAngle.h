// Sine and cosine as one computes them on paper, for the plain twin and for tests: in decimal digits, with pi
// written out and every function given by its power series. Shares no method with the product.
#pragma once

namespace plain {

// The double nearest to the function of an angle in radians. Of an infinite angle it is the NaN with a minus
// sign, and of a NaN that NaN.
double sine(double angle);
double cosine(double angle);

} // namespace plain
