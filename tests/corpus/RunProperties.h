// Properties that hold for any bytes, from the input file to the rewritten one. Each check returns an empty
// text or says what does not hold. The checks leave files in the current directory.
#pragma once

#include <string>
#include <string_view>

// The bytes as an input file: reader, writer and transformation do what their plain twin does, in values,
// messages, warnings and written bytes; a refused file ends the process with the same text. The extents
// bracket every finite coordinate, and the totals count the lines written. Options come from the last bytes.
std::string checkInputFile(std::string_view bytes);

// The bytes as a temporary file: both passes and the whole transformation do what the plain twin does.
std::string checkTemporaryFile(std::string_view bytes);

// The bytes as a word to read and as bit patterns to write: both as the C library does, and a 32-bit float
// comes back from its text.
std::string checkNumberText(std::string_view bytes);
