// Sine and cosine that are the same on every machine, which the C library's are not: there they depend on its
// version and on what the processor can do.
#pragma once

struct SineAndCosine {
    double sine;
    double cosine;
};

// The doubles nearest to the sine and the cosine of an angle in radians, for every finite angle. Of an
// infinite angle both are the NaN with a minus sign, and of a NaN they are that NaN.
SineAndCosine exactSineAndCosine(double angle);
