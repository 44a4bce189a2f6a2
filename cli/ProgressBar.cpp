#include "cli/ProgressBar.h"

#include "cli/FileNames.h"
#include "cli/SystemCalls.h"
#include "stl/StlProgress.h"
#include "stl/Stream.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>

namespace {

constexpr std::chrono::milliseconds firstDrawn{1000};
constexpr std::chrono::milliseconds betweenDrawings{100};
constexpr int barWidth = 30;
constexpr std::size_t longestTitle = 38;

// Seven lines with twelve numbers of 15 characters, as a run writes a facet.
constexpr std::uint64_t facetTextSize = 284;
constexpr std::uint64_t binaryFacetSize = 50;
constexpr std::uint64_t linesPerFacet = 7;

std::unique_ptr<ProgressBar> shownBar;

bool looksBinary(const std::string &beginning)
{
    return std::any_of(
        beginning.begin() + static_cast<std::ptrdiff_t>(std::min<std::size_t>(84, beginning.size())),
        beginning.begin() + static_cast<std::ptrdiff_t>(std::min<std::size_t>(212, beginning.size())),
        [](char character) { return static_cast<unsigned char>(character) > 127U; });
}

std::string beginningOf(const std::string &file)
{
    const Stream stream(std::fopen(file.c_str(), "rb"));
    std::string text(std::size_t{64} * 1024, '\0');
    text.resize(stream ? std::fread(text.data(), 1, text.size(), stream.get()) : 0);
    return text;
}

} // namespace

ProgressBar::ProgressBar(std::string title, std::uint64_t whole, Clock::time_point start, Print print)
    : m_title(std::move(title)),
      m_whole(std::max<std::uint64_t>(whole, 1)),
      m_next(start + firstDrawn),
      m_print(std::move(print))
{
    if (m_title.size() > longestTitle)
        m_title = "..." + m_title.substr(m_title.size() - longestTitle + 3);
}

ProgressBar::~ProgressBar() { wipe(); }

void ProgressBar::wipe()
{
    if (m_isDrawn)
        m_print("\r\x1B[K");
    m_isDrawn = false;
}

void ProgressBar::add(std::size_t bytes, Clock::time_point now)
{
    m_done += bytes;
    if (now < m_next)
        return;
    m_next = now + betweenDrawings;
    draw();
}

void ProgressBar::draw()
{
    const int percent = static_cast<int>(std::min<std::uint64_t>(m_done * 100 / m_whole, 99));
    const int full = percent * barWidth / 100;
    const std::string bar = std::string(static_cast<std::size_t>(full), '#') +
                            std::string(static_cast<std::size_t>(barWidth - full), '.');
    m_print("\r" + m_title + " [" + bar + "] " + std::to_string(percent) + "%\x1B[K");
    m_isDrawn = true;
}

std::uint64_t bytesOfRun(const std::string &input, int scans)
{
    std::error_code error;
    const std::uint64_t size = std::filesystem::file_size(pathOf(input), error);
    if (error)
        return 0;
    const std::string beginning = beginningOf(input);
    const bool isBinary = looksBinary(beginning);
    const auto lines = static_cast<std::uint64_t>(std::count(beginning.begin(), beginning.end(), '\n'));
    const std::uint64_t facetSize = isBinary    ? binaryFacetSize
                                    : lines > 0 ? beginning.size() * linesPerFacet / lines + 1
                                                : facetTextSize;
    const std::uint64_t text = size / facetSize * facetTextSize;
    return (isBinary ? 1 : 2) * size + (3 + static_cast<std::uint64_t>(scans)) * text;
}

TerminalProgress::TerminalProgress(const std::string &title, std::uint64_t whole)
{
    shownBar =
        std::make_unique<ProgressBar>(title, whole, ProgressBar::Clock::now(), [](const std::string &text) {
            std::fputs(text.c_str(), stderr);
            std::fflush(stderr);
        });
    stlProgressObserver = [](std::size_t bytes) { shownBar->add(bytes, ProgressBar::Clock::now()); };
}

TerminalProgress::~TerminalProgress()
{
    stlProgressObserver = nullptr;
    shownBar.reset();
}

bool TerminalProgress::isPossible() { return standardErrorIsTerminal(); }

void TerminalProgress::wipe()
{
    if (shownBar)
        shownBar->wipe();
}
