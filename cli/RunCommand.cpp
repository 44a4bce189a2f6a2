#include "cli/RunCommand.h"

#include "cli/Complaints.h"
#include "cli/FileNames.h"
#include "cli/MeshFacts.h"
#include "cli/PrivateFolder.h"
#include "cli/ProgressBar.h"
#include "cli/Publication.h"
#include "cli/Reports.h"
#include "cli/RunLogReader.h"
#include "cli/StandardError.h"
#include "cli/SystemCalls.h"
#include "stl/StlMessages.h"
#include "stl/StlPasses.h"
#include "stl/Stream.h"
#include "transform/RunFiles.h"
#include "transform/RunPipeline.h"
#include "transform/RunReporter.h"

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <optional>

namespace fs = std::filesystem;

namespace {

using Clock = std::chrono::steady_clock;

std::string bytesOf(const std::string &path, const std::string &file)
{
    const Stream stream(std::fopen(path.c_str(), "rb"));
    if (!stream)
        throw Failure(file, std::strerror(errno));
    std::string bytes;
    char block[4096];
    while (const std::size_t count = std::fread(block, 1, sizeof block, stream.get()))
        bytes.append(block, count);
    if (std::ferror(stream.get()) != 0)
        throw Failure(file, std::strerror(errno));
    return bytes;
}

TransformParameters parametersFor(const RunRequest &request)
{
    if (request.repeatedLog.empty())
        return parametersOf(request.values);
    const std::string &log = request.repeatedLog;
    const LoggedRun run = readRunLog(bytesOf(log, log), log);
    const TransformParameters parameters = parametersOf(request.values, run, log);
    for (const std::string &warning : run.warnings)
        complainOf(log, warning);
    return parameters;
}

// A result of the run: what the user calls it, and the absolute path.
struct Result {
    std::string file;
    std::string place;
};

struct Results {
    Result output;
    std::optional<Result> log;
    std::optional<Result> text;
};

void refuseSameFiles(const std::string &input, const Results &results)
{
    std::error_code error;
    const std::string inputPlace = fileName(fs::weakly_canonical(pathOf(input), error));
    for (const std::optional<Result> &other : {results.log, results.text}) {
        if (other &&
            (isSamePlace(other->place, results.output.place) || isSamePlace(other->place, inputPlace)))
            throw WrongUse(visibleName(other->file) +
                           " is the input or the output as well; give it another name");
    }
    if (results.log && results.text && isSamePlace(results.log->place, results.text->place))
        throw WrongUse(visibleName(results.log->file) +
                       " is also where the text is kept; give it another name");
}

Results resultsOf(const RunRequest &request)
{
    const auto result = [&request](const std::string &file) {
        return Result{file, placeForFile(file, request.force)};
    };
    Results results;
    results.output = result(request.output);
    if (!request.log.empty())
        results.log = result(request.log);
    if (request.keepTemporary)
        results.text = result(request.output + "." + temporaryFileName);
    refuseSameFiles(request.input, results);
    return results;
}

bool takesLengths(const TransformParameters &p)
{
    return p.xSetL + p.ySetL + p.zSetL + p.xSameY + p.xSameZ + p.ySameX + p.ySameZ + p.zSameX + p.zSameY > 0;
}

int scansOf(const TransformParameters &p)
{
    const bool forOriginsAndLengths =
        p.xSet0 + p.ySet0 + p.zSet0 + p.xSameY + p.xSameZ + p.ySameX + p.ySameZ + p.zSameX + p.zSameY > 0;
    return (forOriginsAndLengths ? 1 : 0) + (p.xSetL + p.ySetL + p.zSetL > 0 ? 1 : 0);
}

std::string absoluteName(const std::string &name) { return fileName(fs::absolute(pathOf(name))); }

// Where the private folder is made if not beside the output; empty if it is.
std::string temporaryFolderOf(const RunRequest &request)
{
    if (!request.temporaryFolder.empty())
        return absoluteName(request.temporaryFolder);
    const char *const fromEnvironment = std::getenv("TMPDIR");
    return fromEnvironment == nullptr || *fromEnvironment == '\0' ? std::string()
                                                                  : absoluteName(fromEnvironment);
}

// The pipeline takes names as characters, in which only UTF-8 keeps its bytes. Any other name gets a link in
// the current directory.
QString pipelineName(const std::string &path, const char *link)
{
    const QString name = QString::fromUtf8(path.data(), static_cast<int>(path.size()));
    if (name.toUtf8().toStdString() == path)
        return name;
    std::error_code error;
    fs::create_symlink(pathOf(path), link, error);
    if (error)
        throw Failure(path, "the name is not UTF-8, and a link to it cannot be made: " + error.message());
    return link;
}

class Listener final : public RunReporter {
public:
    Listener(std::string input, std::string output)
        : m_input(std::move(input)),
          m_output(std::move(output))
    {}

    void error(const QString &text) override { m_errors.push_back(text.toStdString()); }
    void logNotEmptied(const QString &details) override { m_errors.push_back(details.toStdString()); }
    void finished(const QString &) override { m_hasFinished = true; }

    bool succeeded() const { return m_hasFinished && m_errors.empty(); }

    void tell() const
    {
        for (const std::string &text : m_errors)
            complainOf(isAboutOutput(text) ? m_output : m_input, inWords(text));
    }

private:
    static bool isAboutOutput(const std::string &text)
    {
        return text == stlWriteErrorMessage || text == "Unable to open output file.";
    }

    // Two errors of a run are not meant for this place: one has a placeholder in it, one no words at all.
    static std::string inWords(const std::string &text)
    {
        if (text.find_first_not_of('\n') == std::string::npos)
            return "the text made of the mesh cannot be read back";
        return text == "Cannot open logfile: %s" ? "Cannot open logfile." : text;
    }

    std::string m_input;
    std::string m_output;
    std::vector<std::string> m_errors;
    bool m_hasFinished = false;
};

// The reader's lines, in the name that the user gave. A line that ends the process ends it after this.
class ReaderLines {
public:
    ReaderLines(const std::string &file, const std::string &path)
    {
        s_file = file;
        s_path = path;
        stlMessageHandlers.warning = tell;
        stlMessageHandlers.fatal = tell;
    }
    ~ReaderLines() { stlMessageHandlers = {}; }
    ReaderLines(const ReaderLines &) = delete;
    ReaderLines &operator=(const ReaderLines &) = delete;

private:
    static void tell(const std::string &lines)
    {
        TerminalProgress::wipe();
        std::string text = lines;
        const std::size_t at = text.find(s_path);
        if (at != std::string::npos)
            text.replace(at, s_path.size(), visibleName(s_file));
        complainOf(s_file, text);
    }

    static inline std::string s_file;
    static inline std::string s_path;
};

bool endsWith(std::FILE *stream, const std::string &end)
{
    std::string last(end.size(), '\0');
    return std::fseek(stream, -static_cast<long>(end.size()), SEEK_END) == 0 &&
           std::fread(last.data(), 1, last.size(), stream) == last.size() && last == end;
}

// Line ends are those of the system.
bool isWholeText(const std::string &path)
{
    const Stream stream(std::fopen(path.c_str(), "rb"));
    return stream && (endsWith(stream.get(), "endsolid  \n") || endsWith(stream.get(), "endsolid  \r\n"));
}

// One run with its private folders.
class PrivateRun {
public:
    PrivateRun(const RunRequest &request, Results results)
        : m_request(request),
          m_results(std::move(results)),
          m_beside(fileName(pathOf(m_results.output.place).parent_path()))
    {
        const std::string elsewhere = temporaryFolderOf(request);
        if (!elsewhere.empty())
            m_elsewhere.emplace(elsewhere);
    }

    bool run(const TransformParameters &parameters)
    {
        const std::string input = absoluteName(m_request.input);
        enterWorkFolder();
        const QString inputName = pipelineName(input, privateInputLink);
        const QString outputName =
            m_elsewhere ? pipelineName(output(), privateOutputName) : QString(privateOutputName);
        keepTextAside();
        Listener listener(m_request.input, m_request.output);
        {
            std::optional<TerminalProgress> progress;
            if (!m_request.quiet && TerminalProgress::isPossible())
                progress.emplace(visibleName(m_request.input), bytesOfRun(input, scansOf(parameters)));
            const ReaderLines lines(m_request.input, inputName.toUtf8().toStdString());
            RunPipeline(listener).run(parameters, inputName, outputName);
        }
        listener.tell();
        return listener.succeeded();
    }

    std::string output() const { return m_beside.file(privateOutputName); }
    std::string log() const { return work().file(logFileName); }

    // Everything gets its name, the output last.
    void stage(Publication &publication) const
    {
        if (m_results.log)
            publication.stage(log(), m_results.log->place, m_results.log->file);
        stageText(publication);
        publication.stage(output(), m_results.output.place, m_results.output.file);
    }

    // After a failure, to look at the lines that the message names.
    void publishText() const
    {
        if (!isWholeText(work().file(privateTextName)))
            return;
        Publication publication(m_request.force);
        stageText(publication);
        publication.publish();
    }

private:
    const PrivateFolder &work() const { return m_elsewhere ? *m_elsewhere : m_beside; }

    void enterWorkFolder() const
    {
        std::error_code error;
        fs::current_path(pathOf(work().path()), error);
        if (error)
            throw Failure(work().path(), error.message());
    }

    void stageText(Publication &publication) const
    {
        if (m_results.text)
            publication.stage(work().file(privateTextName), m_results.text->place, m_results.text->file);
    }

    // The pipeline deletes its text after success; here it deletes a link. Not every system makes symbolic
    // ones.
    void keepTextAside() const
    {
        if (!m_results.text)
            return;
        std::error_code error;
        fs::create_symlink(privateTextName, temporaryFileName, error);
        if (error)
            error = linkToEmptyText();
        if (error)
            throw Failure(m_results.text->file, "cannot be kept: " + error.message());
    }

    static std::error_code linkToEmptyText()
    {
        if (!Stream(std::fopen(privateTextName, "w")))
            return {errno, std::generic_category()};
        std::error_code error;
        fs::create_hard_link(privateTextName, temporaryFileName, error);
        return error;
    }

    const RunRequest &m_request;
    Results m_results;
    PrivateFolder m_beside;
    std::optional<PrivateFolder> m_elsewhere;
};

std::string reportOf(Report report, const RunSummary &summary)
{
    if (report == Report::none)
        return {};
    return report == Report::json ? summaryJson(summary) : summaryLine(summary);
}

RunSummary emptySummary(const RunRequest &request)
{
    RunSummary summary;
    summary.input = request.input;
    summary.output = request.output;
    return summary;
}

// Everything that may be wrong with the mesh and can be known without a run. Returns its extents if somebody
// wants them.
std::array<Extent, 3> checkInput(const RunRequest &request, const TransformParameters &parameters)
{
    refuseUnusableInput(request.input);
    const bool mustBeMeasured = takesLengths(parameters) && !request.allowDegenerate;
    if (!mustBeMeasured && request.report == Report::none)
        return {};
    const MeshFacts facts = readMeshFacts(request.input, Warnings::leaveToTheRun);
    if (mustBeMeasured)
        refuseDegenerateScales(facts, parameters, request.input);
    return facts.extents;
}

} // namespace

int runCommand(const RunRequest &request)
{
    const Clock::time_point start = Clock::now();
    const TransformParameters parameters = parametersFor(request);
    RunSummary summary = emptySummary(request);
    summary.before = checkInput(request, parameters);

    PrivateRun run(request, resultsOf(request));
    if (!run.run(parameters)) {
        run.publishText();
        return EXIT_FAILURE;
    }
    summary.counts = readRunLog(bytesOf(run.log(), logFileName), logFileName).counts.value_or(RunCounts());
    if (summary.counts.facets == 0)
        complainOf(request.input, "Warning: no facets were found");
    if (request.report != Report::none)
        summary.after = extentsOfOutput(run.output());
    Publication publication(request.force);
    run.stage(publication);
    summary.seconds = std::chrono::duration<double>(Clock::now() - start).count();
    const std::string report = reportOf(request.report, summary);
    publication.publish(); // from here on nothing can fail but a name and standard output
    printToStandardOutput(report);
    return EXIT_SUCCESS;
}
