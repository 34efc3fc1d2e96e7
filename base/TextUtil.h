#pragma once
// Single-byte text helpers. The system's texts are Latin-1; file names and keys compare
// case-insensitively, with the German umlauts ä, ö, ü folded onto Ä, Ö, Ü as well as ASCII.

#include <cstdarg>
#include <cstdint>
#include <string>
#include <string_view>

char FoldCase(char c);

bool EqualsNoCase(std::string_view a, std::string_view b);
// Negative, zero or positive as a sorts before, with or after b, ignoring case.
int CompareNoCase(std::string_view a, std::string_view b);
bool StartsWithNoCase(std::string_view text, std::string_view prefix);
bool EndsWithNoCase(std::string_view text, std::string_view suffix);

std::string ToUpperLatin1(std::string_view text);
std::string ToLowerAscii(std::string_view text);
std::string_view TrimSpaces(std::string_view text);

// printf-style formatting into an owned string. Always formats with the C locale so that
// numbers carry a decimal point whatever the process locale is.
std::string Format(const char* format, ...) __attribute__((format(printf, 1, 2)));
std::string FormatV(const char* format, va_list args);

// A hash of the text that stays the same from run to run and machine to machine (64-bit FNV-1a).
uint64_t StableHash(std::string_view text);
