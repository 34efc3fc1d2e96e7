#pragma once
// The "property" children of a prefab "shape" element, written or read by one set of calls, so
// that each shape class lists its properties once, in the order the file keeps them. Writing
// appends a property per call (unless its condition is false); reading assigns the value of a
// property of that name when the element has one and it parses, and leaves the field otherwise.
//
// Value formats: booleans "TRUE"/"FALSE"; IDs and bitmasks unsigned decimal; integers "%d";
// floats "%f"; vectors "%.4f" joined by ","; colours "%i,%i,%i,%i" (red, green, blue, alpha of
// 0xAARRGGBB); integer lists "%i" joined by ",". Numbers never depend on the process locale.

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tinyxml2 {
class XMLElement;
}

class ShapePropertyExchange {
public:
    ShapePropertyExchange(tinyxml2::XMLElement& element, bool write);

    bool Writing() const { return m_write; }

    void Text(const char* name, std::string& value, bool when = true);
    void Bool(const char* name, bool& value);
    // One bit of a flag word as a boolean.
    void FlagBit(const char* name, uint32_t& flags, uint32_t bit);
    void Id(const char* name, uint64_t& value);
    void Bitmask(const char* name, uint32_t& value);
    void Int(const char* name, int32_t& value, bool when = true);
    void Float(const char* name, float& value, bool when = true);
    void Vector(const char* name, float* values, int count);
    // Reading takes the list only when it has a multiple of `group` values.
    void Vector(const char* name, std::vector<float>& values, int group);
    void Colour(const char* name, uint32_t& value);
    void IntList(const char* name, std::vector<int32_t>& values, bool when = true);

    // Reading only: the text of a property, null when the element has none of that name.
    const std::string* Find(const char* name) const;

private:
    void Write(const char* name, const std::string& value);
    static std::string VectorText(const float* values, size_t count);

    tinyxml2::XMLElement& m_element;
    bool m_write;
    std::map<std::string, std::string, std::less<>> m_read;
};
