// What must hold for any bytes that are repeated as a run log.
#pragma once

#include <string>
#include <string_view>

// Either they are refused, with a message of one line in the log's name, or what was read is what a run would
// have written: the same bytes again, but for carriage returns. Whatever the command then makes of it is a
// run with finite values and without scales of 0. Returns an empty text or what does not hold.
std::string checkRunLog(std::string_view bytes);
