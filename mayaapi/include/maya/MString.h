#pragma once

#include <ostream>
#include <string>

class MStatus;
class MStringArray;

class MString {
public:
  MString() = default;
  MString(const char* text) : m_text(text ? text : "") {}
  MString(const char* text, int length) : m_text(text ? std::string(text, static_cast<size_t>(length)) : std::string()) {}
  MString(const std::string& text) : m_text(text) {}

  const char* asChar() const { return m_text.c_str(); }
  const std::string& asStdString() const { return m_text; }
  unsigned int length() const { return static_cast<unsigned int>(m_text.size()); }
  unsigned int numChars() const { return length(); }
  bool isEmpty() const { return m_text.empty(); }
  void clear() { m_text.clear(); }
  MString& set(const char* text) { m_text = text ? text : ""; return *this; }
  MString& set(double value);

  int index(char c) const;
  int rindex(char c) const;
  MString substring(int start, int end) const;
  MString substringW(int start, int end) const { return substring(start, end); }
  MStatus split(char separator, MStringArray& parts) const;
  MString toLowerCase() const;
  MString toUpperCase() const;
  bool isInt() const;
  bool isDouble() const;
  int asInt() const;
  double asDouble() const;

  MString& operator+=(const MString& other) { m_text += other.m_text; return *this; }
  MString& operator+=(const char* other) { m_text += other ? other : ""; return *this; }
  MString& operator+=(char c) { m_text += c; return *this; }
  MString& operator+=(int value);
  MString& operator+=(double value);
  MString& operator+=(unsigned int value);
  friend MString operator+(const MString& a, const MString& b) { return MString(a.m_text + b.m_text); }
  friend MString operator+(const MString& a, const char* b) { return MString(a.m_text + (b ? b : "")); }
  friend MString operator+(const char* a, const MString& b) { return MString((a ? a : "") + b.m_text); }
  bool operator==(const MString& other) const { return m_text == other.m_text; }
  bool operator!=(const MString& other) const { return m_text != other.m_text; }
  bool operator==(const char* other) const { return m_text == (other ? other : ""); }
  bool operator!=(const char* other) const { return !(*this == other); }
  bool operator<(const MString& other) const { return m_text < other.m_text; }
  friend std::ostream& operator<<(std::ostream& out, const MString& text) { return out << text.m_text; }

private:
  std::string m_text;
};

#include <maya/MStatus.h>
