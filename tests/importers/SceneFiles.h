#pragma once
// Small scene files written by the tests: a temporary folder, and a glTF writer whose buffers are data URIs.

#include <cstdint>
#include <string>
#include <vector>

// A fresh folder under the test's temporary directory; returns its native path.
std::string MakeTestFolder(const std::string& name);
// Writes text to folder/name and returns the system path (backslashes) of the file.
std::string WriteTestFile(const std::string& folder, const std::string& name, const std::string& text);

class GltfWriter {
public:
    // Each returns the accessor index.
    int AddFloats(const std::vector<float>& values, const char* type);
    int AddIndices(const std::vector<uint16_t>& indices);
    int AddJoints(const std::vector<uint8_t>& joints);
    // JSON members written as they are after "asset", "buffers", "bufferViews" and "accessors".
    std::string Json(const std::string& members) const;

private:
    int AddView(const std::string& bytes, int componentType, size_t count, const char* type, const std::string& bounds);
    std::string m_buffer;
    std::vector<std::string> m_views;
    std::vector<std::string> m_accessors;
};
