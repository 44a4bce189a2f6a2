#include "tests/support/PlainTwin.h"

#include "tests/support/PlainAngle.h"

#include <cerrno>
#include <cmath>
#include <cstring>
#include <limits>

namespace plain {

namespace {

constexpr int headerLength = 80;
constexpr int facetOffset = 84;
constexpr int facetSize = 50;
constexpr int smallestBinarySize = 284;

std::FILE *openOrEnd(const std::string &path, const char *mode, const char *function, const char *purpose)
{
    std::FILE *file = std::fopen(path.c_str(), mode);
    if (file == nullptr)
        throw FatalEnd(std::string(function) + ": Couldn't open " + path + " for " + purpose + ": " +
                       std::strerror(errno) + "\n");
    return file;
}

// One character as text mode gives it: a carriage return before a line feed is dropped.
int textCharacter(std::FILE *file)
{
    const int character = std::getc(file);
    if (character != '\r')
        return character;
    const int next = std::getc(file);
    if (next == '\n')
        return next;
    if (next != EOF)
        std::ungetc(next, file);
    return character;
}

std::int32_t fileSize(std::FILE *file)
{
    std::fseek(file, 0, SEEK_END);
    return static_cast<std::int32_t>(std::ftell(file));
}

bool looksBinary(std::FILE *file)
{
    unsigned char block[128];
    std::fseek(file, facetOffset, SEEK_SET);
    const std::size_t got = std::fread(block, 1, sizeof block, file);
    bool high = false;
    for (std::size_t i = 0; i < got; ++i)
        if (block[i] > 127)
            high = true;
    std::rewind(file);
    return high;
}

std::int32_t countLines(std::FILE *file, std::int32_t size)
{
    std::int32_t lines = 1;
    std::int32_t characters = 0;
    for (std::int32_t i = 0; i < size; ++i) {
        const int character = textCharacter(file);
        ++characters;
        if (character == '\n') {
            if (characters > 4)
                ++lines;
            characters = 0;
        }
    }
    return lines;
}

void readAsciiHeader(Mesh &mesh)
{
    int length = 0;
    while (length < headerLength) {
        const int character = textCharacter(mesh.file);
        if (character == EOF || character == '\n')
            break;
        mesh.stats.header[length++] = static_cast<char>(character);
    }
    mesh.stats.header[length] = '\0';
    mesh.stats.header[headerLength] = '\0';
}

float littleEndianFloat(std::FILE *file, float before)
{
    unsigned char bytes[4];
    if (std::fread(bytes, 1, 4, file) != 4)
        return before;
    std::uint32_t bits = 0;
    for (int i = 3; i >= 0; --i)
        bits = bits << 8 | bytes[i];
    float value = 0.0F;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

std::int32_t initializeBinary(Mesh &mesh, const std::string &path, std::int32_t size)
{
    mesh.closeFile();
    mesh.file = openOrEnd(path, "rb", "stl_initialize", "reading");
    if ((size - facetOffset) % facetSize != 0 || size < smallestBinarySize)
        throw FatalEnd("The file " + path + " has the wrong size.\n");
    const std::int32_t count = (size - facetOffset) / facetSize;

    unsigned char bytes[4] = {};
    if (std::fread(mesh.stats.header, 1, headerLength, mesh.file) != headerLength ||
        std::fread(bytes, 1, 4, mesh.file) != 4)
        throw std::runtime_error("the file shrank while it was read");
    mesh.stats.header[headerLength] = '\0';
    std::uint32_t stored = 0;
    for (int i = 3; i >= 0; --i)
        stored = stored << 8 | bytes[i];
    if (stored != static_cast<std::uint32_t>(count))
        mesh.warnings += "Warning: File size doesn't match number of facets in the header\n";
    return count;
}

void readBinaryFacet(std::FILE *file, Facet &facet)
{
    for (Vertex *triple : {&facet.normal, &facet.corner[0], &facet.corner[1], &facet.corner[2]})
        for (float *number : {&triple->x, &triple->y, &triple->z})
            *number = littleEndianFloat(file, *number);
    for (unsigned char &byte : facet.attribute)
        byte = static_cast<unsigned char>(std::fgetc(file));
}

void readAsciiFacet(std::FILE *file, Facet &facet)
{
    Vertex &n = facet.normal;
    Vertex &a = facet.corner[0];
    Vertex &b = facet.corner[1];
    Vertex &c = facet.corner[2];
    int fields = 0; // not used: a field that does not convert keeps what it holds
    fields += std::fscanf(file, "%*s %*s %f %f %f\n", &n.x, &n.y, &n.z);
    fields += std::fscanf(file, "%*s %*s");
    fields += std::fscanf(file, "%*s %f %f %f\n", &a.x, &a.y, &a.z);
    fields += std::fscanf(file, "%*s %f %f %f\n", &b.x, &b.y, &b.z);
    fields += std::fscanf(file, "%*s %f %f %f\n", &c.x, &c.y, &c.z);
    fields += std::fscanf(file, "%*s");
    fields += std::fscanf(file, "%*s");
    static_cast<void>(fields);
}

void raise(float &max, float value)
{
    if (value > max)
        max = value;
}

void lower(float &min, float value)
{
    if (value < min)
        min = value;
}

void startStatistics(Stats &stats, const Facet &facet)
{
    stats.max = facet.corner[0];
    stats.min = facet.corner[0];
    stats.firstEdgeExtent = std::fabs(facet.corner[0].x - facet.corner[1].x);
    raise(stats.firstEdgeExtent, std::fabs(facet.corner[0].y - facet.corner[1].y));
    raise(stats.firstEdgeExtent, std::fabs(facet.corner[0].z - facet.corner[1].z));
}

void widenStatistics(Stats &stats, const Facet &facet)
{
    for (const Vertex &corner : facet.corner) {
        raise(stats.max.x, corner.x);
        lower(stats.min.x, corner.x);
        raise(stats.max.y, corner.y);
        lower(stats.min.y, corner.y);
        raise(stats.max.z, corner.z);
        lower(stats.min.z, corner.z);
    }
}

void finishStatistics(Stats &stats)
{
    stats.size.x = stats.max.x - stats.min.x;
    stats.size.y = stats.max.y - stats.min.y;
    stats.size.z = stats.max.z - stats.min.z;
    const float square =
        stats.size.x * stats.size.x + stats.size.y * stats.size.y + stats.size.z * stats.size.z;
    stats.boundingDiameter = std::sqrt(square);
}

void printTriple(std::FILE *out, const char *keyword, const Vertex &triple)
{
    std::fprintf(out, "%s % .8E % .8E % .8E\n", keyword, static_cast<double>(triple.x),
                 static_cast<double>(triple.y), static_cast<double>(triple.z));
}

bool readLine(std::FILE *in, char *line)
{
    return in != nullptr && std::fgets(line, lineCapacity, in) != nullptr;
}

void trimLine(char *line)
{
    for (int i = 0; i < 2; ++i) {
        const std::size_t length = std::strlen(line);
        if (length > 0 && (line[length - 1] == '\r' || line[length - 1] == '\n'))
            line[length - 1] = '\0';
    }
}

bool readTrimmed(std::FILE *in, char *line)
{
    if (!readLine(in, line))
        return false;
    trimLine(line);
    return true;
}

std::string token(const char *line, std::size_t &position)
{
    const std::size_t length = std::strlen(line);
    while (position < length && line[position] == ' ')
        ++position;
    std::string text;
    while (position < length && line[position] != ' ')
        text += line[position++];
    ++position;
    return text;
}

bool startsWith(const char *line, const char *keyword)
{
    std::size_t position = 0;
    return token(line, position) == keyword;
}

bool readNumber(const char *line, std::size_t &position, double &number)
{
    const std::string text = token(line, position);
    return !text.empty() && std::sscanf(text.c_str(), "%lf", &number) == 1;
}

// Three numbers after `words` words; the first that fails leaves itself and the rest alone.
void readThree(const char *line, int words, Axes &point)
{
    std::size_t position = 0;
    for (int i = 0; i < words; ++i)
        token(line, position);
    if (readNumber(line, position, point.x) && readNumber(line, position, point.y))
        readNumber(line, position, point.z);
}

int notThatWord(char *message, const char *lead, int number, const char *keyword, const char *line)
{
    std::snprintf(message, messageCapacity, "%sLine %d. Not %s: %s\n", lead, number, keyword, line);
    return -1;
}

int noSuchLine(char *message, const char *lead, int lastNumber)
{
    std::snprintf(message, messageCapacity, "%sError at line %d\n", lead, lastNumber);
    return -1;
}

void widenExtents(Extents &extents, const Axes &corner)
{
    if (corner.x < extents.minX)
        extents.minX = corner.x;
    if (corner.x > extents.maxX)
        extents.maxX = corner.x;
    if (corner.y < extents.minY)
        extents.minY = corner.y;
    if (corner.y > extents.maxY)
        extents.maxY = corner.y;
    if (corner.z < extents.minZ)
        extents.minZ = corner.z;
    if (corner.z > extents.maxZ)
        extents.maxZ = corner.z;
}

// Sums and products as the SSE unit of x86 forms them, also where they are undefined: the first operand that
// is undefined is the result, and if none is, the result has a minus sign.
double undefined(double a, double b)
{
    if (std::isnan(a))
        return a;
    return std::isnan(b) ? b : std::copysign(std::numeric_limits<double>::quiet_NaN(), -1.0);
}

double sum(double a, double b) { return std::isnan(a + b) ? undefined(a, b) : a + b; }
double difference(double a, double b) { return std::isnan(a - b) ? undefined(a, b) : a - b; }
double product(double a, double b) { return std::isnan(a * b) ? undefined(a, b) : a * b; }
double quotient(double a, double b) { return std::isnan(a / b) ? undefined(a, b) : a / b; }

double timesRow(const double (&row)[3], const Axes &p)
{
    return sum(sum(product(row[0], p.x), product(row[1], p.y)), product(row[2], p.z));
}

void turn(Axes &point, const Rotation &rotation)
{
    if (!rotation.isOn())
        return;
    const Axes p = point;
    point.x = timesRow(rotation.m[0], p);
    point.y = timesRow(rotation.m[1], p);
    point.z = timesRow(rotation.m[2], p);
}

void turnAll(Axes &point, const Placement &placement)
{
    turn(point, placement.rotX);
    turn(point, placement.rotY);
    turn(point, placement.rotZ);
}

void place(Axes &point, const Placement &placement)
{
    point.x =
        sum(product(sum(point.x, placement.offsetBefore.x), placement.scale.x), placement.offsetAfter.x);
    point.y =
        sum(product(sum(point.y, placement.offsetBefore.y), placement.scale.y), placement.offsetAfter.y);
    point.z =
        sum(product(sum(point.z, placement.offsetBefore.z), placement.scale.z), placement.offsetAfter.z);
    turnAll(point, placement);
}

bool anyRotation(const Placement &placement)
{
    return placement.rotX.isOn() || placement.rotY.isOn() || placement.rotZ.isOn();
}

int appendTotals(char *message, int lines, int triangles)
{
    char text[100];
    std::snprintf(text, sizeof text, "\nNumber lines read from stl file = %d\n", lines);
    std::strcat(message, text);
    std::snprintf(text, sizeof text, "Number triangles read from stl file = %d\n", triangles);
    std::strcat(message, text);
    return 0;
}

void setRows(Rotation &rotation, const Axes &first, const Axes &second, const Axes &third)
{
    const Axes *rows[3] = {&first, &second, &third};
    for (int i = 0; i < 3; ++i) {
        rotation.m[i][0] = rows[i]->x;
        rotation.m[i][1] = rows[i]->y;
        rotation.m[i][2] = rows[i]->z;
    }
}

void fillRotations(Placement &placement, const Request &request)
{
    constexpr double radiansPerDegree = 0.017453293;
    placement.rotX = Rotation();
    placement.rotY = Rotation();
    placement.rotZ = Rotation();
    if (request.rotateX != 0) {
        const double c = cosine(request.angleX * radiansPerDegree);
        const double s = sine(request.angleX * radiansPerDegree);
        setRows(placement.rotX, {1.0, 0.0, 0.0}, {0.0, c, -s}, {0.0, s, c});
    }
    if (request.rotateY != 0) {
        const double c = cosine(request.angleY * radiansPerDegree);
        const double s = sine(request.angleY * radiansPerDegree);
        setRows(placement.rotY, {c, 0.0, -s}, {0.0, 1.0, 0.0}, {s, 0.0, c});
    }
    if (request.rotateZ != 0) {
        const double c = cosine(request.angleZ * radiansPerDegree);
        const double s = sine(request.angleZ * radiansPerDegree);
        setRows(placement.rotZ, {c, -s, 0.0}, {s, c, 0.0}, {0.0, 0.0, 1.0});
    }
}

void setOriginsAndSameLengths(Placement &placement, const Extents &e, const Request &request)
{
    if (request.setOriginX == 1)
        placement.offsetBefore.x = -e.minX;
    if (request.setOriginY == 1)
        placement.offsetBefore.y = -e.minY;
    if (request.setOriginZ == 1)
        placement.offsetBefore.z = -e.minZ;
    if (request.xSameY == 1)
        placement.scale.x = quotient(difference(e.maxY, e.minY), difference(e.maxX, e.minX));
    if (request.xSameZ == 1)
        placement.scale.x = quotient(difference(e.maxZ, e.minZ), difference(e.maxX, e.minX));
    if (request.ySameX == 1)
        placement.scale.y = quotient(difference(e.maxZ, e.minZ), difference(e.maxY, e.minY));
    if (request.ySameZ == 1)
        placement.scale.y = quotient(difference(e.maxX, e.minX), difference(e.maxY, e.minY));
    if (request.zSameX == 1)
        placement.scale.z = quotient(difference(e.maxX, e.minX), difference(e.maxZ, e.minZ));
    if (request.zSameY == 1)
        placement.scale.z = quotient(difference(e.maxY, e.minY), difference(e.maxZ, e.minZ));
}

void setLengths(Placement &placement, const Extents &e, const Request &request)
{
    if (request.setLengthX != 0)
        placement.scale.x = quotient(request.lengthX, difference(e.maxX, e.minX));
    if (request.setLengthY != 0)
        placement.scale.y = quotient(request.lengthY, difference(e.maxY, e.minY));
    if (request.setLengthZ != 0)
        placement.scale.z = quotient(request.lengthZ, difference(e.maxZ, e.minZ));
}

bool scanAndReopen(char *message, std::FILE *&in, Extents &extents)
{
    if (scanExtents(message, in, extents) != 0)
        return false;
    if (in != nullptr)
        std::fclose(in);
    in = std::fopen("_tmp_stl_", "r");
    return true;
}

int transformOpen(Placement &placement, Extents &extents, char *message, std::FILE *&in, std::FILE *out,
                  const Request &r)
{
    fillRotations(placement, r);
    const int measured = r.setOriginX + r.setOriginY + r.setOriginZ + r.xSameY + r.xSameZ + r.ySameX +
                         r.ySameZ + r.zSameX + r.zSameY;
    if (measured > 0) {
        if (!scanAndReopen(message, in, extents))
            return -1;
        setOriginsAndSameLengths(placement, extents, r);
    }
    if (r.setLengthX != 0 || r.setLengthY != 0 || r.setLengthZ != 0) {
        if (!scanAndReopen(message, in, extents))
            return -1;
        setLengths(placement, extents, r);
    }
    return applyPass(message, in, out, placement);
}

} // namespace

Mesh::~Mesh() { closeFile(); }

void Mesh::closeFile()
{
    if (file != nullptr)
        std::fclose(file);
    file = nullptr;
}

void initialize(Mesh &mesh, const std::string &path)
{
    mesh.stats.initialFacetCount = 0;
    mesh.stats.facetCount = 0;
    mesh.facets.clear();
    mesh.file = openOrEnd(path, "r", "stl_initialize", "reading");
    const std::int32_t size = fileSize(mesh.file);
    mesh.stats.isAscii = !looksBinary(mesh.file);

    std::int32_t count = 0;
    if (mesh.stats.isAscii) {
        count = countLines(mesh.file, size) / 7;
        std::rewind(mesh.file);
        readAsciiHeader(mesh);
    } else {
        count = initializeBinary(mesh, path, size);
    }
    mesh.stats.facetCount += count;
    mesh.stats.initialFacetCount = mesh.stats.facetCount;
}

void allocateFacets(Mesh &mesh)
{
    mesh.facets.assign(static_cast<std::size_t>(mesh.stats.facetCount), Facet());
    mesh.stats.allocatedFacetCount = mesh.stats.facetCount;
}

void loadFacets(Mesh &mesh, int firstFacet, bool first)
{
    if (mesh.stats.isAscii) {
        std::rewind(mesh.file);
        for (int c = std::getc(mesh.file); c != '\n' && c != EOF;)
            c = std::getc(mesh.file);
    } else {
        std::fseek(mesh.file, facetOffset, SEEK_SET);
    }

    Facet working;
    for (int i = firstFacet; i < mesh.stats.facetCount; ++i) {
        if (mesh.stats.isAscii)
            readAsciiFacet(mesh.file, working);
        else
            readBinaryFacet(mesh.file, working);
        mesh.facets[static_cast<std::size_t>(i)] = working;
        if (first)
            startStatistics(mesh.stats, working);
        first = false;
        widenStatistics(mesh.stats, working);
    }
    finishStatistics(mesh.stats);
}

void writeAscii(const Mesh &mesh, const std::string &path)
{
    std::FILE *out = openOrEnd(path, "w", "stl_write_ascii", "writing");
    std::fprintf(out, "solid  (null)\n");
    for (int i = 0; i < mesh.stats.facetCount; ++i) {
        const Facet &facet = mesh.facets[static_cast<std::size_t>(i)];
        printTriple(out, "  facet normal", facet.normal);
        std::fprintf(out, "    outer loop\n");
        for (const Vertex &corner : facet.corner)
            printTriple(out, "      vertex", corner);
        std::fprintf(out, "    endloop\n");
        std::fprintf(out, "  endfacet\n");
    }
    std::fprintf(out, "endsolid  \n");
    std::fclose(out);
}

int scanExtents(char *message, std::FILE *in, Extents &extents)
{
    extents = {1e25, -1e25, 1e25, -1e25, 1e25, -1e25};
    char line[lineCapacity];
    Axes corner;
    int number = 1;
    if (!readLine(in, line)) {
        std::strcpy(message, "\nError reading stl file\n");
        return -1;
    }
    while (readTrimmed(in, line)) {
        ++number;
        std::size_t position = 0;
        const std::string keyword = token(line, position);
        if (keyword == "endsolid")
            return 0;
        if (keyword != "facet")
            return notThatWord(message, "\n", number, "facet", line);
        if (token(line, position) != "normal")
            return notThatWord(message, "\n", number, "normal", line);

        if (!readTrimmed(in, line))
            return noSuchLine(message, "\n", number);
        ++number;
        if (!startsWith(line, "outer"))
            return notThatWord(message, "\n", number, "outer", line);

        for (int i = 0; i < 3; ++i) {
            if (!readTrimmed(in, line))
                return noSuchLine(message, "\n", number);
            ++number;
            if (!startsWith(line, "vertex"))
                return notThatWord(message, "\n", number, "vertex", line);
            readThree(line, 1, corner);
            widenExtents(extents, corner);
        }

        if (!readTrimmed(in, line))
            return noSuchLine(message, "\n", number);
        ++number;
        if (!startsWith(line, "endloop"))
            return notThatWord(message, "\n", number, "endloop", line);

        if (!readTrimmed(in, line))
            return noSuchLine(message, "\n", number);
        ++number;
        if (!startsWith(line, "endfacet"))
            return notThatWord(message, "\n", number, "endfacet", line);
    }
    return 0;
}

int applyPass(char *message, std::FILE *in, std::FILE *out, const Placement &placement)
{
    char line[lineCapacity];
    Axes point; // the normal shares it with the corners
    int number = 1;
    int triangles = 0;
    if (!readLine(in, line))
        return -1;
    std::fprintf(out, "%s", line);
    while (readTrimmed(in, line)) {
        ++number;
        std::size_t position = 0;
        const std::string keyword = token(line, position);
        if (keyword == "endsolid") {
            std::fprintf(out, "%s\n", line);
            return appendTotals(message, number, triangles);
        }
        if (keyword != "facet")
            return notThatWord(message, "", number, "facet", line);
        if (token(line, position) != "normal")
            return notThatWord(message, "", number, "normal", line);
        if (anyRotation(placement)) {
            readThree(line, 2, point);
            turnAll(point, placement);
            std::fprintf(out, "  facet normal %15.8E %15.8E %15.8E\n", point.x, point.y, point.z);
        } else {
            std::fprintf(out, "%s\n", line);
        }

        if (!readTrimmed(in, line))
            return noSuchLine(message, "\n", number);
        ++number;
        if (!startsWith(line, "outer"))
            return notThatWord(message, "", number, "outer", line);
        std::fprintf(out, "%s\n", line);

        for (int i = 0; i < 3; ++i) {
            if (!readTrimmed(in, line))
                return noSuchLine(message, "", number);
            ++number;
            if (!startsWith(line, "vertex"))
                return notThatWord(message, "", number, "vertex", line);
            readThree(line, 1, point);
            place(point, placement);
            std::fprintf(out, "      vertex %15.8E %15.8E %15.8E\n", point.x, point.y, point.z);
        }

        if (!readTrimmed(in, line))
            return noSuchLine(message, "", number);
        ++number;
        if (!startsWith(line, "endloop"))
            return notThatWord(message, "", number, "endloop", line);
        std::fprintf(out, "%s\n", line);

        if (!readTrimmed(in, line))
            return noSuchLine(message, "\n", number);
        ++number;
        if (!startsWith(line, "endfacet"))
            return notThatWord(message, "\n", number, "endfacet", line);
        std::fprintf(out, "%s\n", line);
        ++triangles;
    }
    return appendTotals(message, number, triangles);
}

int transform(Placement &placement, Extents &extents, char *message, std::FILE *in, std::FILE *out,
              const Request &request)
{
    if (in == nullptr || out == nullptr)
        return -1;
    const int result = transformOpen(placement, extents, message, in, out, request);
    if (in != nullptr)
        std::fclose(in);
    std::fclose(out);
    return result;
}

} // namespace plain
