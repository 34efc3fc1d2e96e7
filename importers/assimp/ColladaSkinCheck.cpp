#include "importers/assimp/ColladaSkinCheck.h"

#include <tinyxml2.h>

#include <charconv>
#include <cstdint>
#include <map>
#include <string>

namespace {

using tinyxml2::XMLElement;

struct Accessor {
    int64_t Count = 0;
    int64_t Stride = 1;
    int64_t Offset = 0;
    std::string Array;
};

// What the checks need of the document, by id.
struct ColladaSources {
    std::map<std::string, int64_t, std::less<>> ArrayLengths;        // array id -> values it really holds
    std::map<std::string, Accessor, std::less<>> Accessors;          // <source> id -> its accessor
    std::map<std::string, std::string, std::less<>> PositionSources; // <vertices> id -> its POSITION source
    std::map<std::string, std::string, std::less<>> MeshVertices;    // <geometry> id -> its <vertices> id
};

bool IsSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

// Calls visit with each white-space separated token of the text, without copying: arrays run to
// millions of values.
template <class Visit>
void ForEachToken(const char* text, Visit visit)
{
    const std::string_view all = text ? text : "";
    for (size_t at = 0; at < all.size();) {
        while (at < all.size() && IsSpace(all[at]))
            ++at;
        const size_t start = at;
        while (at < all.size() && !IsSpace(all[at]))
            ++at;
        if (at > start)
            visit(all.substr(start, at - start));
    }
}

// Assimp reads indices as unsigned numbers and anything else as 0.
int64_t IndexValue(std::string_view token)
{
    int64_t value = 0;
    const auto [end, error] = std::from_chars(token.data(), token.data() + token.size(), value);
    return error == std::errc() && value > 0 ? value : 0;
}

std::string_view Reference(const char* uri)
{
    std::string_view text = uri ? uri : "";
    if (!text.empty() && text.front() == '#')
        text.remove_prefix(1);
    return text;
}

bool IsArray(std::string_view name)
{
    return name == "float_array" || name == "Name_array" || name == "IDREF_array" || name == "int_array" ||
           name == "bool_array" || name == "SIDREF_array" || name == "token_array";
}

void Gather(const XMLElement& element, ColladaSources& sources)
{
    const std::string_view name = element.Name();
    const char* id = element.Attribute("id");
    if (id && IsArray(name)) {
        const int64_t declared = element.Int64Attribute("count", 0);
        int64_t held = 0;
        ForEachToken(element.GetText(), [&](std::string_view) { ++held; });
        sources.ArrayLengths[id] = declared < held ? declared : held;
    } else if (id && name == "source") {
        const XMLElement* common = element.FirstChildElement("technique_common");
        if (const XMLElement* accessor = common ? common->FirstChildElement("accessor") : nullptr)
            sources.Accessors[id] = {accessor->Int64Attribute("count", 0), accessor->Int64Attribute("stride", 1),
                                     accessor->Int64Attribute("offset", 0),
                                     std::string(Reference(accessor->Attribute("source")))};
    } else if (id && name == "vertices") {
        for (const XMLElement* input = element.FirstChildElement("input"); input;
             input = input->NextSiblingElement("input"))
            if (input->Attribute("semantic", "POSITION"))
                sources.PositionSources[id] = Reference(input->Attribute("source"));
    } else if (id && name == "geometry") {
        const XMLElement* mesh = element.FirstChildElement("mesh");
        const XMLElement* vertices = mesh ? mesh->FirstChildElement("vertices") : nullptr;
        if (vertices && vertices->Attribute("id"))
            sources.MeshVertices[id] = vertices->Attribute("id");
    }
    for (const XMLElement* child = element.FirstChildElement(); child; child = child->NextSiblingElement())
        Gather(*child, sources);
}

std::string CheckAccessors(const ColladaSources& sources)
{
    for (const auto& [id, accessor] : sources.Accessors) {
        if (accessor.Count < 0 || accessor.Stride < 1 || accessor.Offset < 0)
            return "the accessor of source '" + id + "' has a negative count or offset or a stride below 1";
        const auto held = sources.ArrayLengths.find(accessor.Array);
        if (held == sources.ArrayLengths.end() || accessor.Count == 0)
            continue;
        const int64_t reads = accessor.Offset + accessor.Stride * accessor.Count;
        if (reads > held->second)
            return "the accessor of source '" + id + "' reads " + std::to_string(reads) + " values from an array of " +
                   std::to_string(held->second);
    }
    return {};
}

// Elements the source behind a reference holds; -1 when the reference leads nowhere (Assimp reports that).
int64_t SourceCount(const ColladaSources& sources, std::string_view id)
{
    const auto found = sources.Accessors.find(id);
    return found == sources.Accessors.end() ? -1 : found->second.Count;
}

int64_t PositionCount(const ColladaSources& sources, std::string_view geometry)
{
    const auto vertices = sources.MeshVertices.find(geometry);
    if (vertices == sources.MeshVertices.end())
        return -1;
    const auto positions = sources.PositionSources.find(vertices->second);
    return positions == sources.PositionSources.end() ? -1 : SourceCount(sources, positions->second);
}

std::string CheckSkin(const XMLElement& skin, const ColladaSources& sources)
{
    const XMLElement* weights = skin.FirstChildElement("vertex_weights");
    if (!weights)
        return {};
    const std::string where = "the skin of '" + std::string(Reference(skin.Attribute("source"))) + "'";

    // Assimp sizes the bones by the names of <joints> but a file may give <vertex_weights> another JOINT source:
    // the smaller one bounds the joint indices either way.
    int64_t jointCount = -1;
    int64_t weightCount = -1;
    const auto takeSmaller = [](int64_t& bound, int64_t count) {
        if (count >= 0 && (bound < 0 || count < bound))
            bound = count;
    };
    for (const XMLElement* parent : {skin.FirstChildElement("joints"), weights})
        for (const XMLElement* input = parent ? parent->FirstChildElement("input") : nullptr; input;
             input = input->NextSiblingElement("input")) {
            const int64_t count = SourceCount(sources, Reference(input->Attribute("source")));
            if (input->Attribute("semantic", "JOINT"))
                takeSmaller(jointCount, count);
            else if (input->Attribute("semantic", "WEIGHT") && parent == weights)
                takeSmaller(weightCount, count);
        }

    const int64_t weightedVertices = weights->Int64Attribute("count", 0);
    const int64_t positions = PositionCount(sources, Reference(skin.Attribute("source")));
    if (positions > weightedVertices)
        return where + " weights " + std::to_string(weightedVertices) + " of its " + std::to_string(positions) +
               " vertices";

    // Assimp reads <v> as joint and weight index pairs, whatever offsets the inputs declare.
    const XMLElement* pairList = weights->FirstChildElement("v");
    std::string problem;
    int64_t joint = -1; // the first half of a pair, until its weight index arrives
    ForEachToken(pairList ? pairList->GetText() : nullptr, [&](std::string_view token) {
        if (joint < 0) {
            joint = IndexValue(token);
            return;
        }
        const int64_t weight = IndexValue(token);
        if (problem.empty() && jointCount >= 0 && joint >= jointCount)
            problem = where + " names joint " + std::to_string(joint) + " of " + std::to_string(jointCount);
        else if (problem.empty() && weightCount >= 0 && weight >= weightCount)
            problem = where + " names weight " + std::to_string(weight) + " of " + std::to_string(weightCount);
        joint = -1;
    });
    return problem;
}

std::string CheckSkins(const XMLElement& element, const ColladaSources& sources)
{
    if (std::string_view(element.Name()) == "skin")
        return CheckSkin(element, sources);
    for (const XMLElement* child = element.FirstChildElement(); child; child = child->NextSiblingElement())
        if (std::string problem = CheckSkins(*child, sources); !problem.empty())
            return problem;
    return {};
}

} // namespace

std::string ColladaSkinProblem(std::string_view text)
{
    tinyxml2::XMLDocument document;
    if (document.Parse(text.data(), text.size()) != tinyxml2::XML_SUCCESS || !document.RootElement())
        return {};
    ColladaSources sources;
    Gather(*document.RootElement(), sources);
    if (std::string problem = CheckAccessors(sources); !problem.empty())
        return problem;
    return CheckSkins(*document.RootElement(), sources);
}
