// Sizes on which all readers of mesh text agree.
#pragma once

// A line is what fgets reads into this many characters: a longer one arrives in pieces of stlLongestLine
// characters, and each piece counts as a line.
constexpr int stlLineCapacity = 1000;
constexpr int stlLongestLine = stlLineCapacity - 1;

// The size of a message buffer: the longest line, its message and both totals fit.
constexpr int stlMessageCapacity = 2048;
