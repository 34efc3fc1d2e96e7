#include <maya/MString.h>

#include <maya/MStringArray.h>

#include <cctype>
#include <cstdlib>
#include <locale>
#include <sstream>

namespace {

std::string FormatDouble(double value)
{
  std::ostringstream out;
  out.imbue(std::locale::classic());
  out << value;
  return out.str();
}

bool ParsesFully(const std::string& text, bool integer)
{
  if (text.empty())
    return false;
  std::istringstream in(text);
  in.imbue(std::locale::classic());
  if (integer) {
    long long value = 0;
    in >> value;
  } else {
    double value = 0.0;
    in >> value;
  }
  return !in.fail() && in.peek() == std::char_traits<char>::eof();
}

}

MString& MString::set(double value)
{
  m_text = FormatDouble(value);
  return *this;
}

int MString::index(char c) const
{
  const size_t at = m_text.find(c);
  return at == std::string::npos ? -1 : static_cast<int>(at);
}

int MString::rindex(char c) const
{
  const size_t at = m_text.rfind(c);
  return at == std::string::npos ? -1 : static_cast<int>(at);
}

MString MString::substring(int start, int end) const
{
  const int size = static_cast<int>(m_text.size());
  if (start < 0)
    start = 0;
  if (end >= size)
    end = size - 1;
  if (start > end)
    return MString();
  return MString(m_text.substr(static_cast<size_t>(start), static_cast<size_t>(end - start + 1)));
}

MStatus MString::split(char separator, MStringArray& parts) const
{
  parts.clear();
  std::string current;
  for (char c : m_text) {
    if (c == separator) {
      if (!current.empty())
        parts.append(MString(current));
      current.clear();
    } else {
      current += c;
    }
  }
  if (!current.empty())
    parts.append(MString(current));
  return MS::kSuccess;
}

MString MString::toLowerCase() const
{
  std::string out = m_text;
  for (char& c : out)
    c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return MString(out);
}

MString MString::toUpperCase() const
{
  std::string out = m_text;
  for (char& c : out)
    c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return MString(out);
}

bool MString::isInt() const { return ParsesFully(m_text, true); }
bool MString::isDouble() const { return ParsesFully(m_text, false); }

int MString::asInt() const { return static_cast<int>(std::strtol(m_text.c_str(), nullptr, 10)); }

double MString::asDouble() const
{
  std::istringstream in(m_text);
  in.imbue(std::locale::classic());
  double value = 0.0;
  in >> value;
  return in.fail() ? 0.0 : value;
}

MString& MString::operator+=(int value) { m_text += std::to_string(value); return *this; }
MString& MString::operator+=(unsigned int value) { m_text += std::to_string(value); return *this; }
MString& MString::operator+=(double value) { m_text += FormatDouble(value); return *this; }
