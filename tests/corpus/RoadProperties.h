// What must hold for any bytes at all on the road from an input file to the rewritten one. Every check
// returns an empty text, or says what does not hold. They work in the current directory, which they litter.
#pragma once

#include <string>
#include <string_view>

// The bytes as an input file: reader, writer and transformation do what a plain twin of them does, in values,
// messages, warnings and written bytes; a refused file ends the process with the same text. Extents bracket
// every finite coordinate and the totals are those of the lines written. Options come from the last bytes.
std::string checkInputFile(std::string_view bytes);

// The bytes as a temporary file: both passes and the whole transformation do what the plain twin does.
std::string checkTemporaryFile(std::string_view bytes);

// The bytes as a word to read and as bit patterns to write: both as the C library does it, and a 32-bit float
// comes back from its text.
std::string checkNumberText(std::string_view bytes);
