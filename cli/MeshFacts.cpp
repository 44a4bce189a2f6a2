#include "cli/MeshFacts.h"

#include "cli/Complaints.h"
#include "cli/FileNames.h"
#include "cli/RunValues.h"
#include "cli/StandardError.h"
#include "stl/StlMessages.h"
#include "stl/StlPasses.h"
#include "stl/StlReader.h"
#include "stl/Stream.h"

#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

// A run holds the size of a file in 31 bits; what is larger would become a mesh without facets.
constexpr std::uintmax_t firstSizeTooLarge = std::uintmax_t{1} << 31U;

// Takes over what the reader has to say about one file, and turns the end of the process into an exception.
class ReaderMessages {
public:
    ReaderMessages(const std::string &file, Warnings warnings)
        : m_before(stlMessageHandlers)
    {
        s_file = &file;
        stlMessageHandlers.warning = [](const std::string &) {};
        if (warnings == Warnings::tell)
            stlMessageHandlers.warning = [](const std::string &lines) { complainOf(*s_file, lines); };
        stlMessageHandlers.fatal = [](const std::string &lines) { throw Failure(*s_file, lines); };
    }
    ~ReaderMessages() { stlMessageHandlers = m_before; }
    ReaderMessages(const ReaderMessages &) = delete;
    ReaderMessages &operator=(const ReaderMessages &) = delete;

private:
    static inline const std::string *s_file = nullptr;
    StlMessageHandlers m_before;
};

struct LoadedMesh : StlMesh {
    explicit LoadedMesh(const std::string &path)
    {
        try {
            stl_initialize(*this, path.c_str());
            stl_allocate_facets(*this);
            stl_load_facets(*this, 0, true);
        } catch (...) {
            release();
            throw;
        }
        if (facets == nullptr) {
            release();
            throw Failure(path, std::strerror(ENOMEM));
        }
    }
    ~LoadedMesh() { release(); }
    LoadedMesh(const LoadedMesh &) = delete;
    LoadedMesh &operator=(const LoadedMesh &) = delete;

private:
    void release()
    {
        if (file != nullptr)
            std::fclose(file);
        file = nullptr;
        stl_release_facets(*this);
    }
};

// 0.1F is 0.1, not 0.10000000149.
double asWritten(float value)
{
    if (!std::isfinite(value))
        return static_cast<double>(value);
    char text[64];
    const std::to_chars_result written = std::to_chars(text, text + sizeof text, value);
    double result = 0.0;
    std::from_chars(text, written.ptr, result);
    return result;
}

std::string labelOf(const StlMesh &mesh)
{
    std::string label(mesh.stats.header, sizeof mesh.stats.header);
    const std::size_t last = label.find_last_not_of(std::string(" \t\r\n\0", 5));
    label.resize(last == std::string::npos ? 0 : last + 1);
    return label;
}

// The scale that a wanted length leads to.
void refuseScale(double wanted, double own, const std::string &option, char axis, const std::string &file)
{
    if (std::isfinite(wanted / own))
        return;
    char extent[32];
    std::snprintf(extent, sizeof extent, "%.7g", own);
    throw Failure(file, "--" + option + ": no scale can do that, for the mesh has an extent of " + extent +
                            " on " + axis + "; --allow-degenerate does what the window does");
}

} // namespace

void refuseUnusableInput(const std::string &file)
{
    std::error_code error;
    const fs::file_status status = fs::status(pathOf(file), error);
    if (fs::is_directory(status))
        throw Failure(file, "is a folder");
    if (fs::is_fifo(status) || fs::is_socket(status))
        throw Failure(file, "is a pipe, and a mesh is read twice");
    const Stream opened(std::fopen(file.c_str(), "r"));
    if (!opened)
        throw Failure(file, std::strerror(errno));
    if (fs::is_regular_file(status) && fs::file_size(pathOf(file), error) >= firstSizeTooLarge && !error)
        throw Failure(file, "has 2 GiB or more, which no run can read");
}

MeshFacts readMeshFacts(const std::string &file, Warnings warnings)
{
    refuseUnusableInput(file);
    const ReaderMessages messages(file, warnings);
    const LoadedMesh mesh(file);
    MeshFacts facts;
    facts.isBinary = mesh.stats.type == binary;
    facts.facetCount = mesh.stats.facetCount;
    facts.label = labelOf(mesh);
    if (facts.facetCount > 0) {
        const StlVertex &min = mesh.stats.min;
        const StlVertex &max = mesh.stats.max;
        facts.extents = {Extent{asWritten(min.x), asWritten(max.x)},
                         Extent{asWritten(min.y), asWritten(max.y)},
                         Extent{asWritten(min.z), asWritten(max.z)}};
    }
    return facts;
}

void refuseDegenerateScales(const MeshFacts &mesh, const TransformParameters &p, const std::string &file)
{
    const auto length = [&mesh](int axis) {
        const Extent &extent = mesh.extents[static_cast<std::size_t>(axis)];
        return extent.max - extent.min;
    };
    for (int axis = 0; axis < axisCount; ++axis) {
        if (p.*fieldsOf(axis).lengthIsSet != 0)
            refuseScale(p.*fieldsOf(axis).length, length(axis), nameOf(cliOption(OptionId::length), axis),
                        axisLetters[axis], file);
        for (int of = 0; of < axisCount; ++of) {
            if (of != axis && p.*sameLengthFlag(axis, of) != 0)
                refuseScale(length(of), length(axis), nameOf(cliOption(OptionId::lengthOf), axis),
                            axisLetters[axis], file);
        }
    }
}

std::array<Extent, 3> extentsOfOutput(const std::string &file)
{
    const Stream stream(std::fopen(file.c_str(), "r"));
    char message[stlMessageCapacity] = "";
    std::array<Extent, 3> e;
    if (!stream || stl_scan_extents(message, stream.get(), &e[0].min, &e[0].max, &e[1].min, &e[1].max,
                                    &e[2].min, &e[2].max) != 0)
        throw Failure(file, std::string("cannot be measured: ") + message);
    return e;
}
