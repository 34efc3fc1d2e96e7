#include "SceneFiles.h"

#include "base/Number.h"
#include "base/Path.h"
#include "tests/UniqueTempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>

namespace {

std::string Base64(const std::string& bytes)
{
    static const char digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (size_t i = 0; i < bytes.size(); i += 3) {
        uint32_t group = uint32_t(uint8_t(bytes[i])) << 16;
        if (i + 1 < bytes.size())
            group |= uint32_t(uint8_t(bytes[i + 1])) << 8;
        if (i + 2 < bytes.size())
            group |= uint8_t(bytes[i + 2]);
        text += digits[(group >> 18) & 63];
        text += digits[(group >> 12) & 63];
        text += i + 1 < bytes.size() ? digits[(group >> 6) & 63] : '=';
        text += i + 2 < bytes.size() ? digits[group & 63] : '=';
    }
    return text;
}

template <typename T>
std::string BytesOf(const std::vector<T>& values)
{
    std::string bytes(values.size() * sizeof(T), '\0');
    if (!values.empty())
        std::memcpy(bytes.data(), values.data(), bytes.size());
    return bytes;
}

size_t ComponentsOf(const char* type)
{
    const std::string t = type;
    return t == "SCALAR" ? 1 : t == "VEC2" ? 2 : t == "VEC3" ? 3 : t == "VEC4" ? 4 : 16;
}

} // namespace

std::string MakeTestFolder(const std::string& name)
{
    // CTest runs tests of one suite in parallel processes, so each test gets a folder of its own.
    const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
    const std::string owner = test ? std::string("_") + test->name() : std::string();
    static const UniqueTempFolder root("kestrel_importers");
    const std::filesystem::path folder = root.Native(name + owner);
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    return folder.string();
}

std::string WriteTestFile(const std::string& folder, const std::string& name, const std::string& text)
{
    const std::filesystem::path path = std::filesystem::path(folder) / name;
    std::ofstream(path, std::ios::binary) << text;
    return FromNativePath(path.string());
}

int GltfWriter::AddView(const std::string& bytes, int componentType, size_t count, const char* type,
                        const std::string& bounds)
{
    while (m_buffer.size() % 4 != 0)
        m_buffer += '\0';
    m_views.push_back("{\"buffer\":0,\"byteOffset\":" + std::to_string(m_buffer.size()) +
                      ",\"byteLength\":" + std::to_string(bytes.size()) + "}");
    m_buffer += bytes;
    m_accessors.push_back("{\"bufferView\":" + std::to_string(m_views.size() - 1) +
                          ",\"componentType\":" + std::to_string(componentType) + ",\"count\":" + std::to_string(count) +
                          ",\"type\":\"" + type + "\"" + bounds + "}");
    return static_cast<int>(m_accessors.size()) - 1;
}

int GltfWriter::AddFloats(const std::vector<float>& values, const char* type)
{
    const size_t components = ComponentsOf(type);
    std::string bounds;
    // glTF requires bounds on positions and animation inputs; giving them everywhere is allowed.
    std::string minText = ",\"min\":[";
    std::string maxText = ",\"max\":[";
    for (size_t c = 0; c < components; ++c) {
        float low = std::numeric_limits<float>::max();
        float high = std::numeric_limits<float>::lowest();
        for (size_t i = c; i < values.size(); i += components) {
            low = std::min(low, values[i]);
            high = std::max(high, values[i]);
        }
        minText += (c ? "," : "") + FormatFloat(low, 6);
        maxText += (c ? "," : "") + FormatFloat(high, 6);
    }
    bounds = minText + "]" + maxText + "]";
    return AddView(BytesOf(values), 5126, values.size() / components, type, bounds);
}

int GltfWriter::AddIndices(const std::vector<uint16_t>& indices)
{
    return AddView(BytesOf(indices), 5123, indices.size(), "SCALAR", "");
}

int GltfWriter::AddJoints(const std::vector<uint8_t>& joints)
{
    return AddView(BytesOf(joints), 5121, joints.size() / 4, "VEC4", "");
}

std::string GltfWriter::Json(const std::string& members) const
{
    std::string json = "{\"asset\":{\"version\":\"2.0\"},\"buffers\":[{\"byteLength\":" + std::to_string(m_buffer.size()) +
                       ",\"uri\":\"data:application/octet-stream;base64," + Base64(m_buffer) + "\"}],\"bufferViews\":[";
    for (size_t i = 0; i < m_views.size(); ++i)
        json += (i ? "," : "") + m_views[i];
    json += "],\"accessors\":[";
    for (size_t i = 0; i < m_accessors.size(); ++i)
        json += (i ? "," : "") + m_accessors[i];
    return json + "]," + members + "}";
}
