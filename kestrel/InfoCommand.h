#pragma once
// "kestrel info FILE": prints what a scene file holds once loaded into the Maya stand-in, or the contents of one
// of our own asset files. Returns the process exit code; failures name the file and the reason on err.

#include <cstdio>
#include <string>

int RunInfo(const std::string& nativePath, std::FILE* out, std::FILE* err);
