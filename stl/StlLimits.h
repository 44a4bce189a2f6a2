// Sizes that every reader of mesh text agrees on.
#pragma once

// A line is what fgets with room for this many characters reads: a longer one arrives in pieces of 999
// characters, and each piece counts as a line.
constexpr int stlLineCapacity = 1000;
constexpr int stlLongestLine = stlLineCapacity - 1;

// The size of a message buffer: the longest line, its message and both totals fit.
constexpr int stlMessageCapacity = 2048;
