#include "cli/CommandLine.h"

#include "cli/Complaints.h"
#include "cli/StandardError.h"
#include "cli/StrictNumber.h"

#include <QCommandLineParser>

#include <cstdlib>
#include <cstring>
#include <new>

namespace {

// No exception can leave the hashes of Qt 6: without memory for them the process would be ended by a signal.
// While one of these lives, missing memory ends it in the command's own way.
class MissingMemoryEndsProcess {
public:
    MissingMemoryEndsProcess()
        : m_before(std::set_new_handler(endProcess))
    {}
    ~MissingMemoryEndsProcess() { std::set_new_handler(m_before); }
    MissingMemoryEndsProcess(const MissingMemoryEndsProcess &) = delete;
    MissingMemoryEndsProcess &operator=(const MissingMemoryEndsProcess &) = delete;

private:
    [[noreturn]] static void endProcess()
    {
        complainOfMissingMemory();
        std::_Exit(EXIT_FAILURE);
    }

    std::new_handler m_before;
};

// The parser works on Qt's strings. One character for each byte keeps names in any encoding as they are.
QString asCharacters(const std::string &bytes)
{
    return QString::fromLatin1(bytes.data(), static_cast<int>(bytes.size()));
}
std::string asBytes(const QString &characters) { return characters.toLatin1().toStdString(); }

std::string quoted(const std::string &text) { return "\"" + text + "\""; }

// The options that were given, by their rows in the table.
class GivenOptions {
public:
    explicit GivenOptions(const std::vector<std::string> &arguments)
    {
        for (const CliOption &option : cliOptions()) {
            for (const std::string &name : namesOf(option))
                m_parser.addOption(parserOption(option, name));
        }
        QStringList list{"meshvane-cli"};
        for (const std::string &argument : arguments)
            list << asCharacters(argument);
        if (!m_parser.parse(list))
            throw WrongUse(asBytes(m_parser.errorText()) + " See meshvane-cli --help.");
    }

    bool has(OptionId id, int axis = 0) const { return m_parser.isSet(parserName(id, axis)); }

    std::vector<std::string> values(OptionId id, int axis = 0) const
    {
        std::vector<std::string> result;
        for (const QString &value : m_parser.values(parserName(id, axis)))
            result.push_back(asBytes(value));
        return result;
    }

    std::vector<std::string> files() const
    {
        std::vector<std::string> result;
        for (const QString &name : m_parser.positionalArguments())
            result.push_back(asBytes(name));
        return result;
    }

private:
    static QCommandLineOption parserOption(const CliOption &option, const std::string &name)
    {
        QStringList names{QString::fromStdString(name)};
        if (option.shortName != '\0')
            names << QString(QLatin1Char(option.shortName));
        QCommandLineOption result(names);
        result.setValueName(option.valueName);
        return result;
    }

    static QString parserName(OptionId id, int axis)
    {
        return QString::fromStdString(nameOf(cliOption(id), axis));
    }

    QCommandLineParser m_parser;
};

std::string dashed(OptionId id, int axis = 0) { return "--" + nameOf(cliOption(id), axis); }

double numberOf(const std::string &option, const std::string &text)
{
    const std::optional<double> value = strictNumber(text);
    if (!value)
        throw WrongUse(option + ": " + quoted(text) +
                       " is not a number that can be used; write 25.4, -3 or 1e-3");
    return *value;
}

std::optional<double> number(const GivenOptions &given, OptionId id, int axis)
{
    std::optional<double> value;
    for (const std::string &text : given.values(id, axis)) {
        value = numberOf(dashed(id, axis), text);
        if (id == OptionId::scale && *value == 0.0)
            throw WrongUse(dashed(id, axis) + ": " + quoted(text) +
                           " would make the mesh flat; write a number other than 0");
        if (id == OptionId::length && *value < 0.0)
            throw WrongUse(dashed(id, axis) + ": " + quoted(text) +
                           " is negative; write a length of 0 or more");
    }
    return value;
}

std::optional<int> otherAxis(const GivenOptions &given, OptionId id, int axis)
{
    std::optional<int> other;
    for (const std::string &text : given.values(id, axis)) {
        const char *const letter = text.size() == 1 ? std::strchr(axisLetters, text[0]) : nullptr;
        if (letter == nullptr || letter - axisLetters == axis)
            throw WrongUse(dashed(id, axis) + ": " + quoted(text) + " is not another axis; write " +
                           otherAxes(axis));
        other = static_cast<int>(letter - axisLetters);
    }
    return other;
}

void refuseTogether(const GivenOptions &given, int axis, std::initializer_list<OptionId> ids)
{
    std::string first;
    for (const OptionId id : ids) {
        if (!given.has(id, axis))
            continue;
        if (!first.empty())
            throw WrongUse(first + " and " + dashed(id, axis) + " exclude each other; give one of them");
        first = dashed(id, axis);
    }
}

RunValues runValues(const GivenOptions &given)
{
    RunValues values;
    for (int axis = 0; axis < axisCount; ++axis) {
        refuseTogether(given, axis, {OptionId::scale, OptionId::length, OptionId::lengthOf});
        refuseTogether(given, axis, {OptionId::offsetBefore, OptionId::originToZero});
        AxisValues &of = values[static_cast<std::size_t>(axis)];
        of.scale = number(given, OptionId::scale, axis);
        of.offsetBefore = number(given, OptionId::offsetBefore, axis);
        of.offsetAfter = number(given, OptionId::offsetAfter, axis);
        of.length = number(given, OptionId::length, axis);
        of.lengthOf = otherAxis(given, OptionId::lengthOf, axis);
        of.originToZero = given.has(OptionId::originToZero, axis);
        of.angle = number(given, OptionId::rotate, axis);
    }
    return values;
}

// A file or folder, empty if the option is not given.
std::string nameGivenFor(const GivenOptions &given, OptionId id)
{
    std::string name;
    for (const std::string &text : given.values(id)) {
        if (text.empty())
            throw WrongUse(dashed(id) + ": \"\" names nothing; write the name of a " +
                           (cliOption(id).kind == ValueKind::folder ? "folder" : "file"));
        name = text;
    }
    return name;
}

Report reportGiven(const GivenOptions &given)
{
    if (given.has(OptionId::json))
        return Report::json;
    return given.has(OptionId::summary) ? Report::line : Report::none;
}

RunRequest runRequest(const GivenOptions &given, const std::vector<std::string> &files)
{
    if (files.size() != 2 || files[0].empty() || files[1].empty())
        throw WrongUse("give one INPUT and one OUTPUT; see meshvane-cli --help");
    RunRequest request;
    request.values = runValues(given);
    request.input = files[0];
    request.output = files[1];
    request.repeatedLog = nameGivenFor(given, OptionId::repeat);
    request.log = nameGivenFor(given, OptionId::log);
    request.temporaryFolder = nameGivenFor(given, OptionId::temporaryFolder);
    request.keepTemporary = given.has(OptionId::keepTemporary);
    request.allowDegenerate = given.has(OptionId::allowDegenerate);
    request.force = given.has(OptionId::force);
    request.quiet = given.has(OptionId::quiet);
    request.report = reportGiven(given);
    return request;
}

InfoRequest infoRequest(const GivenOptions &given, const std::vector<std::string> &files)
{
    for (const CliOption &option : cliOptions()) {
        for (int axis = 0; axis < (isPerAxis(option) ? axisCount : 1); ++axis) {
            if (option.usedBy == UsedBy::run && given.has(option.id, axis))
                throw WrongUse(dashed(option.id, axis) + " means nothing to info; see meshvane-cli --help");
        }
    }
    InfoRequest request;
    request.files.assign(files.begin() + 1, files.end());
    if (request.files.empty())
        throw WrongUse("info: give at least one FILE; see meshvane-cli --help");
    request.json = given.has(OptionId::json);
    return request;
}

} // namespace

CommandLine readCommandLine(const std::vector<std::string> &arguments)
{
    const MissingMemoryEndsProcess whileQtParses;
    const GivenOptions given(arguments);
    const std::vector<std::string> files = given.files();
    CommandLine line;
    if (given.has(OptionId::help)) {
        line.kind = CommandLine::Kind::help;
    } else if (given.has(OptionId::version)) {
        line.kind = CommandLine::Kind::version;
    } else if (!files.empty() && files.front() == "info") {
        line.kind = CommandLine::Kind::info;
        line.info = infoRequest(given, files);
    } else {
        line.run = runRequest(given, files);
    }
    return line;
}
