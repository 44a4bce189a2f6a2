// The product's transformation next to the plain twin's, on the same temporary file: whatever differs goes
// into a verdict. Needs no test framework.
#pragma once

#include "tests/support/PlainTwin.h"
#include "tests/support/Verdict.h"

#include <string>

struct TransformOutcome {
    int result = 99;
    std::string message = "before";
    std::string output;
};

// Both read "_tmp_stl_" of the current folder, which must exist. Compares result, message, output and all
// numbers that the transformer holds afterwards. The product does the same once more with a carriage return
// before each line feed of the file. Returns what the product did the first time.
TransformOutcome compareTransformation(Verdict &verdict, plain::Placement placement,
                                       const plain::Request &request);
