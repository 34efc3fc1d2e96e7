#include "formats/ShapePropertyExchange.h"

#include "base/Number.h"
#include "base/TextUtil.h"

#include <tinyxml2.h>

#include <algorithm>
#include <string_view>

namespace {

bool ParseNumber(std::string_view text, int32_t& value) { return ParseInt(text, value); }
bool ParseNumber(std::string_view text, float& value) { return ParseFloat(text, value); }
bool ParseNumber(std::string_view text, uint64_t& value)
{
    unsigned long long parsed = 0;
    if (!ParseInt(text, parsed))
        return false;
    value = parsed;
    return true;
}
bool ParseNumber(std::string_view text, uint32_t& value)
{
    unsigned long long parsed = 0;
    if (!ParseInt(text, parsed) || parsed > 0xFFFFFFFFull)
        return false;
    value = static_cast<uint32_t>(parsed);
    return true;
}

// Comma-separated fields; false when any field does not parse.
template <class T>
bool ParseList(std::string_view text, std::vector<T>& values)
{
    values.clear();
    while (true) {
        const size_t comma = text.find(',');
        T value {};
        if (!ParseNumber(text.substr(0, comma), value))
            return false;
        values.push_back(value);
        if (comma == std::string_view::npos)
            return true;
        text.remove_prefix(comma + 1);
    }
}

} // namespace

ShapePropertyExchange::ShapePropertyExchange(tinyxml2::XMLElement& element, bool write)
    : m_element(element)
    , m_write(write)
{
    if (write)
        return;
    for (const tinyxml2::XMLElement* property = element.FirstChildElement("property"); property;
         property = property->NextSiblingElement("property")) {
        const char* name = property->Attribute("name");
        const char* value = property->Attribute("value");
        if (name && value)
            m_read[name] = value;
    }
}

const std::string* ShapePropertyExchange::Find(const char* name) const
{
    const auto found = m_read.find(std::string_view(name));
    return found == m_read.end() ? nullptr : &found->second;
}

void ShapePropertyExchange::Write(const char* name, const std::string& value)
{
    tinyxml2::XMLElement* property = m_element.InsertNewChildElement("property");
    property->SetAttribute("name", name);
    property->SetAttribute("value", value.c_str());
}

void ShapePropertyExchange::Text(const char* name, std::string& value, bool when)
{
    if (m_write) {
        if (when)
            Write(name, value);
    } else if (const std::string* text = Find(name)) {
        value = *text;
    }
}

void ShapePropertyExchange::Bool(const char* name, bool& value)
{
    if (m_write) {
        Write(name, value ? "TRUE" : "FALSE");
    } else if (const std::string* text = Find(name)) {
        if (EqualsNoCase(*text, "TRUE"))
            value = true;
        else if (EqualsNoCase(*text, "FALSE"))
            value = false;
    }
}

void ShapePropertyExchange::FlagBit(const char* name, uint32_t& flags, uint32_t bit)
{
    bool set = (flags & bit) != 0;
    Bool(name, set);
    flags = set ? flags | bit : flags & ~bit;
}

void ShapePropertyExchange::Id(const char* name, uint64_t& value)
{
    if (m_write) {
        Write(name, Format("%llu", static_cast<unsigned long long>(value)));
    } else if (const std::string* text = Find(name)) {
        ParseNumber(*text, value);
    }
}

void ShapePropertyExchange::Bitmask(const char* name, uint32_t& value)
{
    if (m_write) {
        Write(name, Format("%u", value));
    } else if (const std::string* text = Find(name)) {
        ParseNumber(*text, value);
    }
}

void ShapePropertyExchange::Int(const char* name, int32_t& value, bool when)
{
    if (m_write) {
        if (when)
            Write(name, Format("%d", value));
    } else if (const std::string* text = Find(name)) {
        ParseNumber(*text, value);
    }
}

void ShapePropertyExchange::Float(const char* name, float& value, bool when)
{
    if (m_write) {
        if (when)
            Write(name, Format("%f", static_cast<double>(value)));
    } else if (const std::string* text = Find(name)) {
        ParseNumber(*text, value);
    }
}

std::string ShapePropertyExchange::VectorText(const float* values, size_t count)
{
    std::string text;
    for (size_t i = 0; i < count; ++i)
        text += (i == 0 ? "" : ",") + Format("%.4f", static_cast<double>(values[i]));
    return text;
}

void ShapePropertyExchange::Vector(const char* name, float* values, int count)
{
    if (m_write) {
        Write(name, VectorText(values, static_cast<size_t>(count)));
        return;
    }
    const std::string* text = Find(name);
    std::vector<float> read;
    if (text && ParseList(*text, read) && read.size() == static_cast<size_t>(count))
        std::copy(read.begin(), read.end(), values);
}

void ShapePropertyExchange::Vector(const char* name, std::vector<float>& values, int group)
{
    if (m_write) {
        Write(name, VectorText(values.data(), values.size()));
        return;
    }
    const std::string* text = Find(name);
    std::vector<float> read;
    if (text && ParseList(*text, read) && read.size() % static_cast<size_t>(group) == 0)
        values = std::move(read);
}

void ShapePropertyExchange::Colour(const char* name, uint32_t& value)
{
    if (m_write) {
        Write(name, Format("%i,%i,%i,%i", static_cast<int>(value >> 16 & 0xFF), static_cast<int>(value >> 8 & 0xFF),
                           static_cast<int>(value & 0xFF), static_cast<int>(value >> 24)));
        return;
    }
    const std::string* text = Find(name);
    std::vector<int32_t> channels;
    if (!text || !ParseList(*text, channels) || channels.size() != 4)
        return;
    for (int32_t channel : channels)
        if (channel < 0 || channel > 255)
            return;
    value = static_cast<uint32_t>(channels[3]) << 24 | static_cast<uint32_t>(channels[0]) << 16 |
            static_cast<uint32_t>(channels[1]) << 8 | static_cast<uint32_t>(channels[2]);
}

void ShapePropertyExchange::IntList(const char* name, std::vector<int32_t>& values, bool when)
{
    if (m_write) {
        if (!when)
            return;
        std::string text;
        for (size_t i = 0; i < values.size(); ++i)
            text += (i == 0 ? "" : ",") + Format("%i", values[i]);
        Write(name, text);
    } else if (const std::string* text = Find(name)) {
        std::vector<int32_t> read;
        if (ParseList(*text, read))
            values = std::move(read);
    }
}
