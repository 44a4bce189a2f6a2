// The bar that a long run shows on a terminal.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

// Drawn for the first time after a second, then ten times a second at most, and wiped out in the end. Time
// and terminal are handed in.
class ProgressBar {
public:
    using Clock = std::chrono::steady_clock;
    using Print = std::function<void(const std::string &)>;

    // `whole` is the number of bytes to come, which may be a guess: the bar is full only when it is gone.
    ProgressBar(std::string title, std::uint64_t whole, Clock::time_point start, Print print);
    ~ProgressBar(); // wipes out what was drawn
    ProgressBar(const ProgressBar &) = delete;
    ProgressBar &operator=(const ProgressBar &) = delete;

    void add(std::size_t bytes, Clock::time_point now);

    // Makes room for a line of text; the bar comes back when it is drawn next.
    void wipe();

private:
    void draw();

    std::string m_title;
    std::uint64_t m_whole;
    std::uint64_t m_done = 0;
    Clock::time_point m_next;
    Print m_print;
    bool m_isDrawn = false;
};

// How many bytes a run reads and writes: the input once or, as text, twice; the temporary text and the
// output, once written; the temporary text again for each scan and for the transformation. Facets of a text
// are counted from its first lines.
std::uint64_t bytesOfRun(const std::string &input, int scans);

// Shows the bar while it lives, if standard error is a terminal.
class TerminalProgress {
public:
    TerminalProgress(const std::string &title, std::uint64_t whole);
    ~TerminalProgress();
    TerminalProgress(const TerminalProgress &) = delete;
    TerminalProgress &operator=(const TerminalProgress &) = delete;

    static bool isPossible();

    // To be called before a line is printed while a bar may be shown.
    static void wipe();
};
