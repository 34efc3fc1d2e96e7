#pragma once
// A deterministic text form of a container, for the debug file and for golden tests. Records
// refer to each other by list position (never by address), numbers use a decimal point
// whatever the locale, and lines end with "\n".

#include <string>

class VMModel;
class VMWorld;

std::string DumpScene(const VMWorld& world);
std::string DumpScene(const VMModel& model);
