#pragma once
// Command lines are written for Windows, where a program receives one text; POSIX programs
// receive an argument list. These split a command line as the Microsoft C runtime does.

#include <string>
#include <string_view>
#include <vector>

// Arguments are separated by blanks and tabs outside double quotes; the quotes themselves are
// removed. 2n backslashes before a double quote give n backslashes and the quote delimits;
// 2n+1 give n backslashes and a literal quote; "" inside quotes is a literal quote; other
// backslashes are kept as they are.
std::vector<std::string> SplitArguments(std::string_view arguments);

// The program name comes first and takes no backslash rules: up to the next double quote when it
// starts with one, else up to the first blank or tab. An empty line gives no words at all.
std::vector<std::string> SplitCommandLine(std::string_view commandLine);
