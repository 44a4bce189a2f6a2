// The text of the run log, piece by piece in the order in which a run writes it. No file handling.
#pragma once

#include "transform/TransformParameters.h"

#include <string>

// Deliberate: every piece of text is followed by one more line feed, so most lines are followed by an empty
// one; readers of old logs know it as it is. Numbers have six decimals.
std::string runLogHeader();
std::string runLogParameters(const TransformParameters &parameters);

// `counts` is the message of a successful transformation.
std::string runLogOutcome(const std::string &counts);
