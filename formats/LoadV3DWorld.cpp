#include "formats/LoadV3DWorld.h"

#include "base/FileSystem.h"
#include "base/Number.h"
#include "base/TextUtil.h"
#include "model/VMWorld.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <new>
#include <vector>

namespace {

constexpr int32_t FirstReadableVersion = 120;

constexpr std::array SectionNames {
    "SURFACES",       "VERTICES",          "TEXTUREPLANES",       "POLYGONS",     "PATCHES",        "HEIGHTFIELDS",
    "LIGHTS",         "EVENTAREAS",        "EVENTAREAPLANES",     "EVENTAREAANIMS", "EVENTAREAANIMPLANES",
    "WORLDANIMS",     "WORLDANIMVERTICES", "VISAREAS",            "VISAREAPLANES", "VISAREAPORTALS",
    "VISAREAANTIPORTALS", "ENTITIES",      "HEIGHTMAPS",          "TRILISTS",     "PATHNODES",      "PATHS",
    "SHADOWMODELS",   "WALLMARKS",
};

// The format's other records; this reader needs only vertices and polygons.
constexpr std::array SkippedRecords {
    "GLOBALS", "FXLIB", "SRF", "HMAP", "E", "TLS", "B", "BZS", "HFS", "HF", "XE", "L", "WM", "VISAREA",
    "VISPLANE", "VISPORTAL", "VISANTIPORTAL", "EA", "EPL", "NODE", "PATH", "SHADOWMODEL", "LG", "LGBOX",
};

// "[text]" gives "text"; anything else is answered as it is.
std::string_view WithoutBrackets(std::string_view text)
{
    text = TrimSpaces(text);
    if (text.size() >= 2 && text.front() == '[' && text.back() == ']')
        text = TrimSpaces(text.substr(1, text.size() - 2));
    return text;
}

bool IsDigit(char c)
{
    return std::isdigit(static_cast<unsigned char>(c)) != 0;
}

bool IsCountLine(std::string_view line)
{
    line = WithoutBrackets(line);
    if (!StartsWithNoCase(line, "NUM"))
        return false;
    const size_t equals = line.find('=');
    if (equals == std::string_view::npos)
        return false;
    const std::string_view section = line.substr(3, equals - 3);
    int count = 0;
    return std::any_of(SectionNames.begin(), SectionNames.end(),
                       [&](const char* name) { return EqualsNoCase(section, name); }) &&
           ParseInt(line.substr(equals + 1), count) && count >= 0;
}

// Commas outside double quotes separate the fields; tabs are spaces; each field is trimmed.
std::vector<std::string> SplitFields(std::string_view line)
{
    std::vector<std::string> fields(1);
    bool quoted = false;
    for (const char c : line) {
        if (c == '"')
            quoted = !quoted;
        if (c == ',' && !quoted)
            fields.emplace_back();
        else
            fields.back() += c == '\t' ? ' ' : c;
    }
    for (std::string& field : fields)
        field = std::string(TrimSpaces(field));
    return fields;
}

class Reader {
public:
    Reader(VMWorld& world, std::string& error) : m_world(world), m_error(error) {}

    int32_t Line(std::string_view line, int number)
    {
        m_number = number;
        if (line.size() > V3DMaxLineLength)
            return Fail(V3DBadRecord, "is longer than 4 MiB");
        const std::string_view trimmed = TrimSpaces(line);
        if (trimmed.empty() || trimmed.starts_with("//") || EqualsNoCase(trimmed, "[HEADER_START]") ||
            EqualsNoCase(trimmed, "[HEADER_END]"))
            return 0;
        if (const int32_t version = V3DVersion(trimmed); version >= 0) {
            m_version = version;
            if (version < FirstReadableVersion)
                return Fail(V3DOldVersion, Format("gives the version %d; files before 120 are not read", version));
            return 0;
        }
        if (IsCountLine(trimmed))
            return 0;

        // The keyword first: skipped records are not split at all.
        const std::string_view first = TrimSpaces(trimmed.substr(0, trimmed.find(',')));
        const std::string keyword = ToUpperLatin1(first);
        const bool known = keyword == "D" || keyword == "P" ||
                           std::find(SkippedRecords.begin(), SkippedRecords.end(), keyword) != SkippedRecords.end();
        if (!known)
            return Fail(V3DBadRecord, "has the unknown record \"" + std::string(first) + "\"");
        if (m_version < FirstReadableVersion)
            return Fail(V3DOldVersion, "holds a record before the version line");
        if (keyword == "D")
            return Vertex(SplitFields(trimmed));
        if (keyword == "P")
            return Polygon(SplitFields(trimmed));
        return 0;
    }

private:
    int32_t Fail(int32_t code, const std::string& what)
    {
        m_error = Format("line %d ", m_number) + what;
        return code;
    }

    bool Floats(const std::vector<std::string>& fields, size_t first, size_t count, float scale, float* out)
    {
        for (size_t i = 0; i < count; ++i) {
            float value = 0.0f;
            if (!ParseFloat(fields[first + i], value))
                return false;
            out[i] = value / scale;
        }
        return true;
    }

    int32_t Vertex(const std::vector<std::string>& fields)
    {
        const bool normals = m_version >= 150;
        const bool tangents = m_version >= 176;
        const size_t materialField = tangents ? 14 : normals ? 11 : 8;
        if (fields.size() <= materialField)
            return Fail(V3DBadRecord, Format("has a vertex with %zu fields; version %d needs %zu", fields.size(),
                                             m_version, materialField + 1));
        std::unique_ptr<VMVertex> vertex = VMWorld::NewVertex();
        if (!vertex)
            return Fail(V3DOutOfMemory, "cannot be held in memory");
        int material = 0;
        if (!Floats(fields, 1, 3, 100.0f, vertex->Position) || !Floats(fields, 4, 2, 1024.0f, vertex->BaseUV) ||
            (normals && !Floats(fields, 8, 3, 256.0f, vertex->Normal)) ||
            (tangents && !Floats(fields, 11, 3, 1.0f, vertex->Tangent)) || !ParseInt(fields[materialField], material) ||
            material < 0)
            return Fail(V3DBadRecord, "has a vertex field that is no number");
        vertex->SecondUV[0] = -1.0f;
        vertex->SecondUV[1] = -1.0f;
        if (tangents && (vertex->Tangent[0] != 0.0f || vertex->Tangent[1] != 0.0f || vertex->Tangent[2] != 0.0f))
            m_world.HasTangents = 1;
        if (m_world.Vertices.Add(std::move(vertex)) != 0)
            return Fail(V3DOutOfMemory, "cannot be held in memory");
        return 0;
    }

    int32_t Polygon(const std::vector<std::string>& fields)
    {
        int material = 0;
        int cornerCount = 0;
        if (fields.size() < 3 || !ParseInt(fields[1], material) || !ParseInt(fields[2], cornerCount) ||
            cornerCount < 3 || fields.size() != 3 + static_cast<size_t>(cornerCount))
            return Fail(V3DBadRecord, "has a polygon that is not \"P, material, n\" and n >= 3 vertex numbers");
        std::unique_ptr<VMPolygon> polygon = VMWorld::NewPolygon();
        if (!polygon)
            return Fail(V3DOutOfMemory, "cannot be held in memory");
        try {
            for (int i = 0; i < cornerCount; ++i) {
                int index = -1;
                if (!ParseInt(fields[3 + static_cast<size_t>(i)], index) || !m_world.Vertices.IsValidIndex(index))
                    return Fail(V3DBadRecord, "has a polygon corner that names no vertex read before it");
                polygon->Corners.push_back(m_world.Vertices[index]);
            }
            polygon->Neighbours.assign(polygon->Corners.size(), nullptr);
        } catch (const std::bad_alloc&) {
            return Fail(V3DOutOfMemory, "cannot be held in memory");
        }
        if (m_world.Polygons.Add(std::move(polygon)) != 0)
            return Fail(V3DOutOfMemory, "cannot be held in memory");
        return 0;
    }

    VMWorld& m_world;
    std::string& m_error;
    int32_t m_version = 0;
    int m_number = 0;
};

} // namespace

int32_t V3DVersion(std::string_view line)
{
    line = WithoutBrackets(line);
    if (!StartsWithNoCase(line, "VNUM="))
        return -1;
    line.remove_prefix(5);
    const size_t point = line.find('.');
    if (point == 0 || point == std::string_view::npos || point + 1 >= line.size() || !IsDigit(line[point + 1]))
        return -1;
    int32_t major = 0;
    for (const char c : line.substr(0, point)) {
        if (!IsDigit(c) || major > 100000)
            return -1;
        major = major * 10 + (c - '0');
    }
    int32_t version = (major * 10 + (line[point + 1] - '0')) * 10;
    if (point + 2 < line.size() && IsDigit(line[point + 2]))
        version += line[point + 2] - '0';
    return version;
}

int32_t ReadV3DWorld(std::string_view text, VMWorld& world, std::string& error)
{
    Reader reader(world, error);
    int number = 0;
    while (!text.empty()) {
        const size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
        if (!line.empty() && line.back() == '\r')
            line.remove_suffix(1);
        if (const int32_t code = reader.Line(line, ++number); code != 0)
            return code;
    }
    return 0;
}

int32_t LoadV3DWorld(std::string_view path, VMWorld& world, std::string& error)
{
    std::string text;
    try {
        if (!ReadWholeFile(path, text, &error))
            return V3DCannotOpen;
    } catch (const std::bad_alloc&) {
        error = "the file does not fit in memory";
        return V3DOutOfMemory;
    }
    return ReadV3DWorld(text, world, error);
}
